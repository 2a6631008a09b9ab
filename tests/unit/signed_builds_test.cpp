#include <ostream>
#include <tuple>
#include <vector>

#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/signed_builds_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kChecking = "lblAnimationMsg.Caption = \"Checking the signature...\"";

std::string Flipped(std::string text, std::size_t at) {
    text[at] = static_cast<char>(text[at] ^ 1);
    return text;
}

std::vector<std::string> LinesOf(const std::string& file) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < file.size();) {
        const std::size_t end = file.find('\n', start) + 1;
        lines.push_back(file.substr(start, end - start));
        start = end;
    }
    return lines;
}

class SignedBuilds : public SignedTest {};

TEST_F(SignedBuilds, NewOneIsFetchedAfterItsSignatureAndOffered) {
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig, GET tolvex30.exe");
    EXPECT_EQ(Window().lblTolvexVersion.Caption.Get(),
              "q-tolvex Version available to install: 3.00.12.05");
}

TEST_F(SignedBuilds, SignatureIsNeverOnTheDisk) {
    ExpectOffered(newBuild);
    EXPECT_THAT(world.disk.Names(),
                testing::UnorderedElementsAre("c:\\tolvex\\filecopy.avi", "c:\\tolvex\\tolvex.exe",
                                              "c:\\tolvex\\tolvex30.exe"));
}

TEST_F(SignedBuilds, WithNothingNewNothingMoreIsAsked) {
    Stage("3.0.11.0", 210000, serverTime);
    RunCheck();
    EXPECT_EQ(RequestsAfterProbes(), "");
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
}

TEST_F(SignedBuilds, WithoutKeysNoSignatureIsAskedFor) {
    shared.SigningKeys.reset();
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe");
}

TEST_F(SignedBuilds, MissingAnimationIsNotFetched) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig, GET tolvex30.exe");
    EXPECT_EQ(Content("filecopy.avi"), "(no such file)");
}

TEST_F(SignedBuilds, OneWithoutASignatureIsNotFetched) {
    headless::Reply none;
    none.status = 404;
    none.body = "not here";
    world.network.Answer(Get(kSignature), Quiet(none));
    ExpectRefused("Signature Missing", kMissing);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig");
}

TEST_F(SignedBuilds, SignatureCountsWithTheStatus200Only) {
    headless::Reply partial = headless::FileReply(Signature(newBuild));
    partial.status = 206;
    world.network.Answer(Get(kSignature), Quiet(partial));
    ExpectRefused("Signature Missing", kMissing);
}

TEST_F(SignedBuilds, StagedOneGoesWhenTheSignatureIsMissing) {
    Stage("3.0.12.5", 250000, AddMinutes(serverTime, 60));
    PublishSignature("");
    ExpectRefused("Signature Missing", kMissing);
}

/// A file on the server, and what it is.
struct Case {
    const char* name;
    std::string file;
};

void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }

std::vector<Case> FilesThatAreNone() {
    const MinisignSigner maker("maker");
    const std::string build = NewBuild();
    const std::string good = SignatureBy(maker, build);
    std::string legacy = good;
    legacy.replace(legacy.find("\nRU") + 1, 3, "RWQ");
    return {{"Empty", ""},
            {"WebPage", "<html><body>Not found</body></html>\n"},
            {"Long", std::string(1000000, 'x')},
            {"OneByteTooLong", good + std::string(4097 - good.size(), '\n')},
            {"Cut", good.substr(0, good.size() / 2)},
            {"OtherKey", SignatureBy(MinisignSigner("stranger"), build)},
            {"OlderForm", legacy}};
}

class MissingSignature : public SignedBuilds, public testing::WithParamInterface<Case> {};

TEST_P(MissingSignature, LeavesTheBuildOnTheServer) {
    PublishSignature(GetParam().file);
    ExpectRefused("Signature Missing", kMissing);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig");
}

INSTANTIATE_TEST_SUITE_P(SignedBuilds, MissingSignature, testing::ValuesIn(FilesThatAreNone()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(SignedBuilds, OfManyBytesNoMoreIsReadThanASignatureCanHave) {
    headless::Reply endless = headless::FileReply(std::string(10000000, 'x'));
    endless.blockSize = 1024;
    world.network.Answer(Get(kSignature), Quiet(endless));
    ExpectRefused("Signature Missing", kMissing);
    EXPECT_LT(world.network.blocksAskedFor, 10U);
}

std::vector<Case> FilesThatDoNotFit() {
    const MinisignSigner maker("maker");
    MinisignSigner impostor("impostor");
    impostor.TakeNumberOf(maker);
    const std::string build = NewBuild();
    const std::string older = SignatureBy(maker, headless::Build("3.0.11.0", 210000));
    const std::vector<std::string> lines = LinesOf(SignatureBy(maker, build));
    const std::vector<std::string> other = LinesOf(older);
    return {{"OfAnotherBuild", older},
            {"ByAnotherKeyUnderOurNumber", SignatureBy(impostor, build)},
            {"OfAnotherFile", SignatureBy(maker, build, "other.exe")},
            {"OfAFileWhoseNameEndsAlike", SignatureBy(maker, build, "xtolvex30.exe")},
            {"CommentOfAnother", lines[0] + lines[1] + other[2] + other[3]},
            {"ChangedComment", lines[0] + lines[1] + Flipped(lines[2], 20) + lines[3]},
            {"ChangedSignature", lines[0] + Flipped(lines[1], 50) + lines[2] + lines[3]},
            {"SecondSignatureOfAnother", lines[0] + lines[1] + lines[2] + other[3]}};
}

class WrongSignature : public SignedBuilds, public testing::WithParamInterface<Case> {};

TEST_P(WrongSignature, IsLookedAtOnceMoreAndRefused) {
    PublishSignature(GetParam().file);
    ExpectRefused("Signature Invalid", kInvalid);
    EXPECT_EQ(RequestsAfterProbes(),
              "GET tolvex30.exe.minisig, GET tolvex30.exe, GET tolvex30.exe.minisig");
}

INSTANTIATE_TEST_SUITE_P(SignedBuilds, WrongSignature, testing::ValuesIn(FilesThatDoNotFit()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(SignedBuilds, OneChangedBitOfTheBuildIsRefusedAndNothingLooksIntoIt) {
    Publish(Flipped(newBuild, newBuild.size() - 1));
    ExpectRefused("Signature Invalid", kInvalid);
    EXPECT_EQ(Window().lblTolvexVersion.Caption.Get().find("3.00.12.05"), std::string::npos);
}

TEST_F(SignedBuilds, ServerThatChangesBetweenTheRequestsIsAskedOnceMore) {
    PublishSignatureOnce(Signature(oldBuild));
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(),
              "GET tolvex30.exe.minisig, GET tolvex30.exe, GET tolvex30.exe.minisig");
}

TEST_F(SignedBuilds, SignatureThatHasGoneAtTheSecondLookIsInvalid) {
    PublishSignatureOnce(Signature(oldBuild));
    PublishSignature("");
    ExpectRefused("Signature Invalid", kInvalid);
}

class TwoKeys : public SignedBuilds, public testing::WithParamInterface<std::tuple<bool, bool>> {};

TEST_P(TwoKeys, AndTwoBlocksFitInEachOrder) {
    const auto [keyFirst, blockFirst] = GetParam();
    const std::string ours = maker.PublicKeyText();
    const std::string spare = MinisignSigner("spare").PublicKeyText();
    shared.SigningKeys = keyFirst ? ours + " " + spare : spare + " " + ours;
    const std::string good = Signature(newBuild);
    const std::string theirs = SignatureBy(stranger, newBuild);
    PublishSignature(blockFirst ? good + theirs : theirs + good);
    ExpectOffered(newBuild);
}

INSTANTIATE_TEST_SUITE_P(SignedBuilds, TwoKeys, testing::Combine(testing::Bool(), testing::Bool()));

std::vector<Case> KeysThatCannotBeRead() {
    const std::string key = MinisignSigner("maker").PublicKeyText();
    const std::string other = MinisignSigner("stranger").PublicKeyText();
    return {{"Empty", ""},
            {"Blank", " "},
            {"LetterTooMany", "x" + key},
            {"Comma", key + "," + other},
            {"BlankTooMany", key + "  " + other},
            {"WrongLetter", Flipped(key, 0)},
            {"FiveKeys", key + " " + key + " " + key + " " + key + " " + key},
            {"Overlong", std::string(255, 'R')}};
}

class UnreadableKeys : public SignedBuilds, public testing::WithParamInterface<Case> {};

TEST_P(UnreadableKeys, RefuseEveryBuildBeforeAnythingIsFetched) {
    shared.SigningKeys = GetParam().file;
    ExpectRefused("Signing Key Invalid",
                  "The signing key of this program cannot be read.\r\n"
                  "No update can be installed.");
    EXPECT_EQ(RequestsAfterProbes(), "");
}

INSTANTIATE_TEST_SUITE_P(SignedBuilds, UnreadableKeys, testing::ValuesIn(KeysThatCannotBeRead()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(SignedBuilds, KeysThatCannotBeReadAreNotSpokenOfWhenThereIsNothingNew) {
    shared.SigningKeys = "";
    Stage("3.0.11.0", 210000, serverTime);
    RunCheck();
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
}

class StagedSignedBuild : public SignedBuilds {
protected:
    void StageBytes(const std::string& bytes) {
        world.AddFile("tolvex30.exe", bytes, AddMinutes(serverTime, 60));
    }
};

TEST_F(StagedSignedBuild, IsHashedAndOffered) {
    StageBytes(newBuild);
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig");
    EXPECT_TRUE(world.trace.Contains(kChecking));
}

TEST_F(StagedSignedBuild, ThatIsForgedIsFetchedAnewOnce) {
    StageBytes(Flipped(newBuild, 249999));
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig, GET tolvex30.exe");
}

TEST_F(StagedSignedBuild, ThatIsForgedAndAServerThatForgesAreRefused) {
    const std::string forged = Flipped(newBuild, 249999);
    StageBytes(forged);
    Publish(forged);
    ExpectRefused("Signature Invalid", kInvalid);
    EXPECT_EQ(RequestsAfterProbes(),
              "GET tolvex30.exe.minisig, GET tolvex30.exe, GET tolvex30.exe.minisig");
}

TEST_F(StagedSignedBuild, ThatCannotBeReadIsFetchedAnew) {
    StageBytes(newBuild);
    world.disk.Fail("Read", error_number::kDeviceIoError, 2);
    ExpectOffered(newBuild);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig, GET tolvex30.exe");
}

TEST_F(StagedSignedBuild, ThatSomebodyMayStillWriteToIsNotOffered) {
    StageBytes(newBuild);
    world.disk.Find(world.PathOf("tolvex30.exe"))->openUntil = 10000000;
    RunCheck();
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig, GET tolvex30.exe");
}

TEST_F(StagedSignedBuild, YieldsWhileItIsHashed) {
    constexpr std::size_t kLarge = 40000000;
    const std::string large = headless::Build("3.0.12.5", kLarge);
    PublishSigned(large);
    StageBytes(large);
    int yields = 0;
    world.inEachYield = [&] {
        const bool checking = Window().lblAnimationMsg.Caption.Get() == "Checking the signature...";
        yields += checking ? 1 : 0;
    };
    ExpectOffered(large);
    EXPECT_GT(yields, 100);
}

TEST_F(StagedSignedBuild, ThatIsOlderThanTheInstalledOneIsNotOffered) {
    const std::string older = headless::Build("3.0.10.9", 250000);
    PublishSigned(older);
    StageBytes(older);
    RunCheck();
    EXPECT_EQ(RequestsAfterProbes(), "GET tolvex30.exe.minisig");
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
    EXPECT_FALSE(Window().cmdInstall.Visible);
}

TEST_F(StagedSignedBuild, OfAHigherMajorAndALowerMinorNumberIsOffered) {
    const std::string higher = headless::Build("4.0.1.0", 250000);
    world.AddFile("tolvex.exe", headless::Build("3.9.1.0", 210000));
    PublishSigned(higher);
    StageBytes(higher);
    ExpectOffered(higher);
}

TEST_F(SignedBuilds, OlderOneIsFetchedAndFoundNoNewer) {
    const std::string older = headless::Build("3.0.10.9", 250000);
    PublishSigned(older);
    world.user.Answer("No version information");
    RunCheck();
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "No update is required at this time.");
    EXPECT_FALSE(Window().cmdInstall.Enabled);
}

}  // namespace
}  // namespace swiftpatch
