// The updater without a window, as a task or a script starts it: what it says, what it leaves, and
// each of its exit statuses.
#include "e2e/held_file.h"
#include "e2e/options.h"
#include "e2e/text.h"
#include "e2e/unattended_run.h"
#include "support/minisign_signer.h"

namespace swiftpatch::e2e {
namespace {

using namespace unattended;

constexpr milliseconds kSoon{20000};
constexpr char kBackupCreated[] = "created tolvex.3.00.11.00.exe";

class Unattended : public UnattendedRun {
protected:
    /// The server has a newer build.
    void Prepare() {
        Publish("3.0.12.5");
        Install("3.0.11.0");
    }

    /// It has been fetched by an earlier run.
    void PrepareStaged() {
        Prepare();
        Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    }

    /// A main program outside the application folder, so that its file is not in the way.
    MainProgram StartElsewhere(const std::wstring& arguments) {
        other_.emplace(TestOptions().scratch / "other", TestOptions().updater);
        other_->Write("tolvex.exe", Build("3.0.11.0"));
        return {other_->File("tolvex.exe"), L"--record " + arguments};
    }

    std::size_t EventsElsewhere() const { return RecordIn(other_->Path()).size() - 1; }

    std::optional<AppFolder> other_;
};

TEST_F(Unattended, FetchesAndInstallsAndStartsNothing) {
    Prepare();
    LetMainProgramRecord();
    EXPECT_EQ(Run(L""), kInstalled);
    EXPECT_EQ(lines_.front(), "Swift Patch Version: 1.2.002");
    EXPECT_TRUE(Said("checking connection to q-tolvex servers..."));
    EXPECT_TRUE(Said("You have installed the latest version of q-tolvex."));
    EXPECT_FALSE(Said(" %")) << "progress is for a terminal";
    EXPECT_EQ(lines_.back(), "Status 10: The build was installed.");
    ExpectRequests(
        {"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe", "GET tolvex30.exe"});
    ExpectFiles({kBackupCreated, "changed tolvex.exe", "created tolvex30.exe"});
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
    ExpectNothingStarted();
}

TEST_F(Unattended, TheNextRunHasNothingToDo) {
    Prepare();
    EXPECT_EQ(Run(), kInstalled);
    EXPECT_EQ(Run(), kNothingToDo);
    ExpectFiles({});
}

TEST_F(Unattended, InQuietSaysOnlyHowItEnded) {
    Prepare();
    EXPECT_EQ(Run(L"--quiet"), kInstalled);
    EXPECT_EQ(lines_, std::vector<std::string>{"Status 10: The build was installed."});
}

TEST_F(Unattended, WritesProgressForMachines) {
    Prepare();
    EXPECT_EQ(Run(), kInstalled);
    EXPECT_TRUE(Said("{\"event\":\"progress\",\"percent\":"));
    EXPECT_EQ(lines_.back(),
              "{\"event\":\"end\",\"status\":10,\"name\":\"installed\","
              "\"text\":\"The build was installed.\"}");
}

TEST_F(Unattended, CheckFetchesNoBuildAndLeavesNoFile) {
    Prepare();
    std::filesystem::remove(folder_->File("filecopy.avi"));
    EXPECT_EQ(Run(L"--check --json"), kReady);
    ExpectRequests({"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe"});
    ExpectFiles({});
}

TEST_F(Unattended, CheckOfAStagedBuildInstallsNothingWhateverTheDataFileSays) {
    PrepareStaged();
    folder_->WriteSettings(ServerFolder(), "InstallAtOnce=1\r\n");
    EXPECT_EQ(Run(L"--check --json"), kReady);
    ExpectFiles({});
}

TEST_F(Unattended, CheckDeletesNeitherADamagedFileNorWhatAKillHasLeft) {
    Prepare();
    folder_->Write("tolvex30.exe", "no program");
    folder_->Write("tolvex.exe", "none either");
    folder_->Write("~unfinished-copy-5d2e81b7.tmp", "half of one");
    EXPECT_EQ(Run(L"--check --json"), kReady);
    ExpectFiles({});
}

TEST_F(Unattended, CheckWithNothingNewHasNothingToDo) {
    Prepare();
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    EXPECT_EQ(Run(L"--check --json"), kNothingToDo);
    ExpectFiles({});
}

TEST_F(Unattended, CheckOfABuildThatNobodySignedDeletesNothing) {
    PrepareStaged();
    folder_->WriteSettings(ServerFolder(), Sign(Build("3.0.12.5")));
    server_.On(kSignatureTarget, NotFound());
    EXPECT_EQ(Run(L"--check --json"), kNotSigned);
    ExpectFiles({});
}

TEST_F(Unattended, WithoutAServerHasNoConnection) {
    Prepare();
    const DeadPort nobody;
    folder_->WriteSettings(nobody.Host() + "/upd/");
    EXPECT_EQ(Run(), kNoConnection);
    ExpectFiles({});
}

TEST_F(Unattended, WithoutABuildOnTheServerCallsItBad) {
    Prepare();
    server_.On(kBuildTarget, NotFound());
    EXPECT_EQ(Run(), kBadServer);
    ExpectFiles({});
}

TEST_F(Unattended, OfAServerThatFallsSilentEndsByItself) {
    Prepare();
    Reply reply = BuildReply("3.0.12.5");
    reply.end = BodyEnd::kStall;
    reply.endAfter = 100000;
    server_.On("GET", kBuildTarget, reply);
    EXPECT_EQ(Run(), kTimedOut);
    ExpectFiles({"created tolvex30.exe"});
}

TEST_F(Unattended, LeavesARunningProgramAlone) {
    PrepareStaged();
    const MainProgram running = StartElsewhere(L"");
    EXPECT_EQ(Run(), kProgramRunning);
    EXPECT_EQ(EventsElsewhere(), 0U) << "it was told to close";
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({});
}

TEST_F(Unattended, FetchesBesideARunningProgram) {
    Prepare();
    const MainProgram running = StartElsewhere(L"");
    EXPECT_EQ(Run(), kProgramRunning);
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({"created tolvex30.exe"});
}

TEST_F(Unattended, LeavesAProgramAloneThatIsUpToDate) {
    Prepare();
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    const MainProgram running = StartElsewhere(L"");
    EXPECT_EQ(Run(L"--json --close-program"), kNothingToDo);
    EXPECT_EQ(EventsElsewhere(), 0U);
    EXPECT_TRUE(running.Running().Running());
}

TEST_F(Unattended, ClosesTheProgramWhereItMayAndStartsTheNewOne) {
    PrepareStaged();
    LetMainProgramRecord();
    const MainProgram running(folder_->File("tolvex.exe"), L"--record");
    EXPECT_EQ(Run(L"--json --close-program"), kInstalled);
    EXPECT_TRUE(running.Running().WaitForEnd(kSoon));
    Await(
        "the start of the new build",
        [this] {
            const auto record = RecordIn(folder_->Path());
            return !record.empty() && BeginsWith(record.back(), "started 3.0.12.5");
        },
        kSoon);
    EndStartedMainProgram();
}

TEST_F(Unattended, SaysThatTheProgramDidNotClose) {
    PrepareStaged();
    const MainProgram running = StartElsewhere(L"--refuse");
    EXPECT_EQ(Run(L"--json --close-program"), kProgramNotClosed);
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({});
}

TEST_F(Unattended, DoesNotWaitForAProgramThatAsksItsUser) {
    PrepareStaged();
    const MainProgram running = StartElsewhere(L"--ask");
    EXPECT_EQ(Run(L"--json --close-program"), kProgramNotClosed);
    EXPECT_TRUE(Said("does not answer"));
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({});
}

TEST_F(Unattended, SaysSoOfAProgramThatOnlyPretendsToClose) {
    PrepareStaged();
    const MainProgram running(folder_->File("tolvex.exe"), L"--ignore");
    EXPECT_EQ(Run(L"--json --close-program"), kProgramNotClosed);
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
    ExpectFiles({kBackupCreated});
}

TEST_F(Unattended, InstallsNoBuildThatNobodySigned) {
    PrepareStaged();
    folder_->WriteSettings(ServerFolder(), Sign(Build("3.0.12.5")));
    server_.On(kSignatureTarget, NotFound());
    EXPECT_EQ(Run(), kNotSigned);
    ExpectFiles({"deleted tolvex30.exe"});
}

TEST_F(Unattended, InstallsASignedBuild) {
    Prepare();
    folder_->WriteSettings(ServerFolder(), Sign(Build("3.0.12.5")));
    EXPECT_EQ(Run(), kInstalled);
    ExpectFiles({kBackupCreated, "changed tolvex.exe", "created tolvex30.exe"});
}

TEST_F(Unattended, SaysThatTheProgramsFileIsHeld) {
    PrepareStaged();
    const HeldFile held(folder_->File("tolvex.exe"));
    EXPECT_EQ(Run(), kDisk);
    ExpectFiles({kBackupCreated});
}

TEST_F(Unattended, BesideAnotherUpdaterEndsAtOnce) {
    PrepareStaged();
    Start();
    AwaitOffer();
    const std::size_t requests = server_.Requests().size();
    EXPECT_EQ(Run(L"--json"), kOtherUpdater);
    EXPECT_EQ(server_.Requests().size(), requests);
    CloseQuietly();
    ExpectFiles({});
}

TEST_F(Unattended, KeepsTheOneWithAWindowFromStarting) {
    Prepare();
    Reply reply = BuildReply("3.0.12.5");
    reply.bytesPerSecond = reply.body.Size() / 4;
    server_.On("GET", kBuildTarget, reply);
    UnattendedProcess run(Program(), L"--json");
    run.AwaitLine("downloading the", kSoon);
    const Process second(folder_->Updater());
    EXPECT_TRUE(second.WaitForEnd(kSoon));
    EXPECT_EQ(run.AwaitEnd(kSoon), kInstalled);
}

class UnattendedWayBack : public Unattended {
protected:
    UnattendedWayBack() {
        Prepare();
        Install("3.0.12.5");
        Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
        folder_->Write("tolvex.3.00.11.00.exe", Build("3.0.11.0"));
        folder_->WriteSettings(ServerFolder(), "OfferBackups=1\r\n");
    }
};

TEST_F(UnattendedWayBack, GoesBackWithoutAServerAndStaysThere) {
    EXPECT_EQ(Run(L"--json --go-back"), kInstalled);
    EXPECT_TRUE(Said("You are back at version 3.00.11.00."));
    ExpectRequests({});
    ExpectFiles({"changed tolvex.exe", "created tolvex.3.00.12.05.exe"});
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));

    EXPECT_EQ(Run(), kNothingToDo);
    EXPECT_TRUE(Said("You went back from version 3.00.12.05."));
    ExpectFiles({});
    EXPECT_EQ(Run(L"--json --check"), kNothingToDo);
    EXPECT_EQ(Run(L"--json --go-back"), kNothingToDo) << "there is nothing below";
    ExpectFiles({});
}

TEST_F(UnattendedWayBack, LeavesARunningProgramAlone) {
    const MainProgram running = StartElsewhere(L"");
    EXPECT_EQ(Run(L"--json --go-back"), kProgramRunning);
    EXPECT_EQ(EventsElsewhere(), 0U) << "it was told to close";
    ExpectFiles({});
}

TEST_F(UnattendedWayBack, ClosesTheProgramWhereItMay) {
    LetMainProgramRecord();
    const MainProgram running(folder_->File("tolvex.exe"), L"--record");
    EXPECT_EQ(Run(L"--json --go-back --close-program"), kInstalled);
    EXPECT_TRUE(running.Running().WaitForEnd(kSoon));
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
    EndStartedMainProgram();
}

TEST_F(UnattendedWayBack, OfAHeldProgramChangesNothing) {
    const HeldFile held(folder_->File("tolvex.exe"));
    EXPECT_EQ(Run(L"--json --go-back"), kDisk);
    EXPECT_TRUE(folder_->Read("tolvex.3.00.11.00.exe") == Build("3.0.11.0"));
}

TEST_F(UnattendedWayBack, IsNoCheck) {
    EXPECT_EQ(Run(L"--check --go-back"), kUsage);
    ExpectFiles({});
}

TEST_F(Unattended, RefusesAnUnknownArgument) {
    Prepare();
    EXPECT_EQ(Run(L"--check --go-home"), kUsage);
    EXPECT_EQ(lines_.front(), "unknown argument: --go-home");
    ExpectRequests({});
    ExpectFiles({});
}

TEST_F(Unattended, WritesItsHelpAndItsVersion) {
    Prepare();
    EXPECT_EQ(Run(L"--help"), kNothingToDo);
    EXPECT_TRUE(BeginsWith(lines_.front(), "usage: swiftpatch-unattended.exe"));
    EXPECT_EQ(Run(L"--version"), kNothingToDo);
    EXPECT_EQ(lines_, std::vector<std::string>{"SwiftPatch 1.2.2"});
    ExpectRequests({});
}

// Between the look at the versions and the install the program turns into a file that is damaged
// and cannot be deleted: an error in a place that traps none.
TEST_F(Unattended, TellsOfAnErrorThatNobodyTraps) {
    PrepareStaged();
    folder_->WriteSettings(ServerFolder(), Sign(Build("3.0.12.5")));
    Reply late;
    const MinisignSigner maker("maker");
    late.body =
        Body(maker.SignBuild(HashOfBuild(Build("3.0.12.5")), TrustedCommentFor("tolvex30.exe")));
    late.delay = seconds(4);
    server_.On(kSignatureTarget, late);
    UnattendedProcess run(Program(), L"--json");
    run.AwaitLine("minisig", kSoon);
    folder_->Write("tolvex.exe", "damaged");
    const HeldFile held(folder_->File("tolvex.exe"));
    EXPECT_EQ(run.AwaitEnd(kSoon), kInternal);
    EXPECT_NE(run.Output().find("Run-time error '438'"), std::string::npos) << run.Output();
}

}  // namespace
}  // namespace swiftpatch::e2e
