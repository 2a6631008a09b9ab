#include "reentry/machine.h"
#include "runtime/headless/disk.h"
#include "runtime/runtime_error.h"
#include "shared/branding.h"
#include "shared/shared_state.h"
#include "support/minisign_signer.h"

namespace swiftpatch::reentry {

using headless::FileReply;
using headless::HeaderReply;
using headless::Reply;
using headless::World;

namespace {

constexpr const char* kServerDate = "Tue, 10 Mar 2026 10:00:00 GMT";
constexpr const char* kFolder = "http://tolvex.example/files/";
const DateTime kOlder = MakeDateTime({2026, 3, 9, 10, 0, 0});
const DateTime kNewer = MakeDateTime({2026, 3, 11, 10, 0, 0});

Reply Lost() {
    Reply lost;
    lost.failure = error_number::kNoConnection;
    return lost;
}

/// A machine on which everything is in order and a newer build is on the server.
void Offer(World& world) {
    const std::string build = kFolder + std::string("tolvex30.exe");
    world.AddFile("tolvex.dta.txt",
                  "[Updates]\r\nServerDownloadPath=tolvex.example/files/\r\n"
                  "LogFileName=error.log\r\n");
    world.AddFile("error.log", "one\r\ntwo\r\n");
    world.AddFile("filecopy.avi", "RIFF");
    world.AddFile("tolvex.exe", kOldBuild);
    Reply offer = FileReply(kNewBuild, kServerDate);
    offer.blockSize = 16384;
    world.network.Answer("HEAD " + build, offer);
    world.network.Answer("GET " + build, offer);
    world.network.Answer("HEAD " + std::string(kFolder) + "LICENSE.TXT",
                         HeaderReply("Content-Length: 5000\r\n"));
    const Reply animation = FileReply(std::string(4000, 'a'));
    world.network.Answer("HEAD " + std::string(kFolder) + "filecopy.avi", animation);
    world.network.Answer("GET " + std::string(kFolder) + "filecopy.avi", animation);
    // For a run that does not find its data file.
    for (const char* name : {"tolvex30.exe", "LICENSE.TXT"}) {
        world.network.Answer("HEAD http://" SWIFTPATCH_DEFAULT_SERVER + std::string(name), Lost());
    }
}

void OfferWhatIsInstalled(World& world) {
    Offer(world);
    world.AddFile("tolvex.exe", kNewBuild);
    world.AddFile("tolvex30.exe", kNewBuild, kNewer);
}

void OfferWithoutAnimation(World& world) {
    Offer(world);
    world.disk.Remove(world.PathOf("filecopy.avi"));
}

void OfferWhatIsStaged(World& world) {
    Offer(world);
    world.AddFile("tolvex30.exe", kNewBuild, kNewer);
}

void OfferInPlaceOfAnOlderBuild(World& world) {
    Offer(world);
    world.AddFile("tolvex30.exe", headless::Build("3.0.11.9", 70000), kOlder);
}

void OfferToInstallAtOnce(World& world) {
    Offer(world);
    world.AddFile("tolvex.dta.txt",
                  "[Updates]\r\nServerDownloadPath=tolvex.example/files/\r\nInstallAtOnce=1\r\n");
}

void StallOnce(World& world) {
    Offer(world);
    Reply stalled = FileReply(kNewBuild, kServerDate);
    stalled.stallAfter = 40000;
    world.network.AnswerNext("GET " + std::string(kFolder) + "tolvex30.exe", stalled);
}

void LoseTheServer(World& world) {
    Offer(world);
    for (const char* name : {"tolvex30.exe", "LICENSE.TXT"}) {
        world.network.Answer("HEAD " + std::string(kFolder) + name, Lost());
    }
}

const MinisignSigner& Maker() {
    static const MinisignSigner maker("maker");
    return maker;
}

/// Made once: thousands of runs begin with it.
const std::string& SignatureOf(const std::string& build) {
    static std::map<std::string, std::string> signatures;
    std::string& signature = signatures[build];
    if (signature.empty()) {
        signature = Maker().SignBuild(HashOfBuild(build), TrustedCommentFor("tolvex30.exe"));
    }
    return signature;
}

/// From here on builds have to be signed, and the one on offer is.
void Sign(World& world) {
    shared.SigningKeys = Maker().PublicKeyText();
    world.network.Answer("GET " + std::string(kFolder) + "tolvex30.exe.minisig",
                         FileReply(SignatureOf(kNewBuild)));
}

void OfferSigned(World& world) {
    Offer(world);
    Sign(world);
}

void OfferWhatIsStagedAndSigned(World& world) {
    OfferWhatIsStaged(world);
    Sign(world);
}

void OfferToInstallSignedAtOnce(World& world) {
    OfferToInstallAtOnce(world);
    Sign(world);
}

void OfferForged(World& world) {
    OfferSigned(world);
    world.network.Answer("GET " + std::string(kFolder) + "tolvex30.exe",
                         FileReply(kForgedBuild, kServerDate));
}

void StageForged(World& world) {
    OfferWhatIsStagedAndSigned(world);
    world.AddFile("tolvex30.exe", kForgedBuild, kNewer);
}

void ChangeTheServerMeanwhile(World& world) {
    OfferSigned(world);
    world.network.AnswerNext("GET " + std::string(kFolder) + "tolvex30.exe.minisig",
                             FileReply(SignatureOf(kOldBuild)));
}

void LoseTheSignatureOnce(World& world) {
    OfferSigned(world);
    Reply stalled = FileReply(SignatureOf(kNewBuild));
    stalled.stallAfter = 40;
    world.network.AnswerNext("GET " + std::string(kFolder) + "tolvex30.exe.minisig", stalled);
}

void OfferWayBack(World& world) {
    world.disk.Find(world.PathOf("tolvex.dta.txt"))->bytes += "OfferBackups=1\r\n";
    world.AddFile("tolvex.3.00.10.00.exe", kEarlierBuild);
}

void WayBackWhereNothingIsNew(World& world) {
    Offer(world);
    world.AddFile("tolvex30.exe", kOldBuild, kNewer);
    Reply same = FileReply(kOldBuild, kServerDate);
    world.network.Answer("HEAD " + std::string(kFolder) + "tolvex30.exe", same);
    OfferWayBack(world);
}

void WayBackWithoutServer(World& world) {
    LoseTheServer(world);
    OfferWayBack(world);
}

void WayBackFromAnOffer(World& world) {
    OfferWhatIsStaged(world);
    OfferWayBack(world);
}

void WayBackFromASignedOffer(World& world) {
    OfferWhatIsStagedAndSigned(world);
    OfferWayBack(world);
}

void WayBackAfterATimeOut(World& world) {
    StallOnce(world);
    OfferWayBack(world);
}

/// Somebody has gone back already, from the build that is staged.
void WayBackWasGone(World& world) {
    OfferToInstallAtOnce(world);
    OfferWayBack(world);
    world.AddFile("tolvex.exe", kEarlierBuild);
    world.AddFile("tolvex.3.00.11.00.exe", kOldBuild);
    world.AddFile("tolvex30.exe", kOldBuild, kNewer);
    world.network.Answer("HEAD " + std::string(kFolder) + "tolvex30.exe",
                         FileReply(kOldBuild, kServerDate));
}

void RunTheMainProgram(World& world) {
    OfferWhatIsStaged(world);
    world.desktop.push_back({0x500, "q-Tolvex.exe", "q-Tolvex.exe", 0, false, {}});
}

void WayBackWhileTheMainProgramRuns(World& world) {
    WayBackWhereNothingIsNew(world);
    world.desktop.push_back({0x500, "q-Tolvex.exe", "q-Tolvex.exe", 0, false, {}});
}

}  // namespace

// The new one has the smallest size that counts as a build, so that runs are short; the licence
// text proves the connection then.
const std::string kEarlierBuild = headless::Build("3.0.10.0", 82000);
const std::string kOldBuild = headless::Build("3.0.11.0", 81000);
const std::string kNewBuild = headless::Build("3.0.12.5", 80000);
const std::string kForgedBuild = headless::Build("9.9.9.9", 80000);

std::vector<Scenario> AllScenarios() {
    return {
        {"NothingToDo", OfferWhatIsInstalled, {}},
        {"FullDownload", Offer, {}},
        {"ReplacedDownload", OfferInPlaceOfAnOlderBuild, {}},
        {"MissingAnimation", OfferWithoutAnimation, {}},
        {"Install", OfferWhatIsStaged, {Deed::kInstall}},
        {"InstallAtOnce", OfferToInstallAtOnce, {}},
        {"RetryAfterTimeOut", StallOnce, {Deed::kRetry}},
        {"NoServer", LoseTheServer, {}},
        {"RunningProgram", RunTheMainProgram, {Deed::kInstall}},
        {"ErrorLogViewer", LoseTheServer, {Deed::kReadLog}},
        {"SplashHandOver", OfferWhatIsInstalled, {}, true},
        {"CloseDuringDownload", Offer, {Deed::kCloseByCorner}},
        {"SessionEnd", Offer, {Deed::kEndSession}},
        {"SignedDownload", OfferSigned, {Deed::kInstall}},
        {"SignedInstall", OfferWhatIsStagedAndSigned, {Deed::kInstall}},
        {"SignedInstallAtOnce", OfferToInstallSignedAtOnce, {}},
        {"ForgedDownload", OfferForged, {Deed::kInstall}},
        {"ForgedStagedBuild", StageForged, {Deed::kInstall}},
        {"SignatureChangesMeanwhile", ChangeTheServerMeanwhile, {}},
        {"RetryAfterALostSignature", LoseTheSignatureOnce, {Deed::kRetry}},
        {"WayBack", WayBackWhereNothingIsNew, {Deed::kGoBack}},
        {"WayBackWithoutServer", WayBackWithoutServer, {Deed::kGoBack}},
        {"WayBackFromAnOffer", WayBackFromAnOffer, {Deed::kGoBack}},
        {"WayBackFromASignedOffer", WayBackFromASignedOffer, {Deed::kGoBack}},
        {"WayBackAfterATimeOut", WayBackAfterATimeOut, {Deed::kGoBack, Deed::kRetry}},
        {"WayBackWasGone", WayBackWasGone, {}},
        {"WayBackOfARunningProgram", WayBackWhileTheMainProgramRuns, {Deed::kGoBack}},
    };
}

Scenario WithWayBack(Scenario scenario) {
    scenario.prepare = [prepare = scenario.prepare](World& world) {
        prepare(world);
        if (world.disk.Find(world.PathOf("tolvex.3.00.10.00.exe")) == nullptr) {
            OfferWayBack(world);
        }
    };
    return scenario;
}

}  // namespace swiftpatch::reentry
