// The rows about files on the disk.
#include "e2e/http_server.h"
#include "e2e/text.h"
#include "measure.h"

namespace swiftpatch::bench {

using namespace e2e;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBuildSize = 200 * 1024 * 1024;
// Both copies and some more.
constexpr int kWarmMegabytes = 600;
constexpr std::size_t kLogSize = 10 * 1000 * 1000;
constexpr UtcTime kAfterServerDate{std::chrono::seconds(1600000000)};
constexpr char kBackup[] = "tolvex.3.00.11.00.exe";

// From the press that lets the backup begin to the text that tells of the end.
double InstallByProduct(const AppFolder& folder) {
    HttpServer server;
    Reply build;
    build.body = Body::Pattern(kBuildSize);
    build.lastModified = kServerDate;
    server.On("/upd/tolvex30.exe", build);
    folder.WriteSettings(server.Host() + "/upd/");
    const Updater updater(folder.Updater());
    updater.AwaitText(kLblStatus, "Click on Install Button.", kLongestStage);
    updater.Press(kCmdInstall);
    const Box backup = updater.AwaitMessageBox(kLongestStage);
    WarmMemory{kWarmMegabytes};
    const SteadyTime start = Now();
    updater.Answer(backup, IDOK);
    updater.AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                      kLongestTransfer);
    const double seconds = SecondsSince(start);
    CloseQuietly(updater);
    updater.AwaitEnd(kLongestStage);
    fs::remove(folder.File(kBackup));
    return seconds;
}

// The same two copies, each flushed to the disk, over files that are there or not as in the
// install.
double CopyPlainly(const Options& options, const AppFolder& folder) {
    const fs::path backup = options.scratch / "plain_backup.bin";
    const fs::path target = options.scratch / "plain_target.bin";
    fs::copy_file(folder.File("tolvex.exe"), target);
    const std::wstring arguments = L"copy " + Quoted(folder.File("tolvex.exe")) + L" " +
                                   Quoted(backup) + L" " + Quoted(folder.File("tolvex30.exe")) +
                                   L" " + Quoted(target);
    WarmMemory{kWarmMegabytes};
    const double seconds = RunPlain(options, arguments).seconds;
    fs::remove(backup);
    fs::remove(target);
    return seconds;
}

std::string LogText() {
    std::string text;
    for (int line = 1000000; text.size() < kLogSize; ++line) {
        text += std::to_string(line) + " the main program could not save its work\r\n";
    }
    return text;
}

// From the press on the button to the log's window.
double OpenByProduct(const Options& options, const std::string& text) {
    const AppFolder folder(options.scratch / "app", options.updater);
    const DeadPort nobody;
    Furnish(folder, options, nobody.Host() + "/upd/", "LogFileName=errors.log\r\n");
    folder.Write("errors.log", text);
    const Updater updater(folder.Updater());
    updater.AwaitWindow(kFailure, kLongestStage);
    updater.Press(kFailureExit);
    updater.AwaitNoWindow(kFailure, kLongestStage);
    updater.AwaitEnabled(kCmdReadLog, kLongestStage);
    const SteadyTime start = Now();
    updater.Press(kCmdReadLog);
    updater.AwaitWindow(kLog, kLongestStage);
    return SecondsSince(start);
}

}  // namespace

void MeasureInstall(const Options& options) {
    std::vector<double> ratios;
    const AppFolder folder(options.scratch / "app", options.updater);
    Furnish(folder, options, "");
    folder.Write("tolvex30.exe", MainProgram(options, kOffered, kBuildSize));
    folder.SetTime("tolvex30.exe", kAfterServerDate);
    // A staged build of the same length would be fetched again.
    const std::string installed = MainProgram(options, kInstalled, kBuildSize - 1);
    for (int run = 1; run <= kRuns; ++run) {
        folder.Write("tolvex.exe", installed);
        const double plain = CopyPlainly(options, folder);
        const double product = InstallByProduct(folder);
        PrintRun("install of 200 MiB, seconds: two CopyFile, each flushed, %.2f, swiftpatch %.2f",
                 plain, product);
        ratios.push_back(product / plain);
    }
    PrintFigure("install", Median(ratios));
}

void MeasureLog(const Options& options) {
    const std::string text = LogText();
    const fs::path file = options.scratch / "plain.log";
    WriteWholeFile(file, text);
    std::vector<double> ratios;
    for (int run = 1; run <= kRuns; ++run) {
        const double plain = RunPlain(options, L"log " + Quoted(file)).seconds;
        const double product = OpenByProduct(options, text);
        PrintRun("log of 10 MB, seconds: plain text box %.3f, swiftpatch %.3f", plain, product);
        ratios.push_back(product / plain);
    }
    fs::remove(file);
    PrintFigure("log", Median(ratios));
}

}  // namespace swiftpatch::bench
