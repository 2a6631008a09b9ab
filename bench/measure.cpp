#include "measure.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "e2e/body.h"
#include "e2e/drive_error.h"
#include "e2e/text.h"
#include "fixtures/animation.h"

namespace swiftpatch::bench {

using namespace e2e;
namespace fs = std::filesystem;

namespace {

// Wine tells the processor time of the asking process only, whichever process is asked for. So it
// is read where the system below tells it.
constexpr wchar_t kProc[] = L"Z:\\proc";
constexpr double kTicksPerSecond = 100;

std::string ReadIfThere(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The folder of the process that runs this program; its command line begins with the program.
fs::path FindInProc(const fs::path& program) {
    const std::string text = PathText(program);
    for (const auto& entry : fs::directory_iterator(kProc)) {
        const bool isNumber = std::isdigit(PathText(entry.path().filename()).front()) != 0;
        if (isNumber && BeginsWith(ReadIfThere(entry.path() / "cmdline"), text)) {
            return entry.path();
        }
    }
    return {};
}

std::string ReadProc(const Process& process, const char* name) {
    static std::map<DWORD, fs::path> known;
    fs::path& folder = known[process.Id()];
    if (folder.empty() ||
        !BeginsWith(ReadIfThere(folder / "cmdline"), PathText(process.Program()))) {
        folder = FindInProc(process.Program());
    }
    return folder.empty() ? "" : ReadIfThere(folder / name);
}

}  // namespace

SteadyTime Now() { return std::chrono::steady_clock::now(); }

double SecondsBetween(SteadyTime start, SteadyTime end) {
    return std::chrono::duration<double>(end - start).count();
}

double SecondsSince(SteadyTime start) { return SecondsBetween(start, Now()); }

double ProcessorSeconds(const Process& process) {
    const std::string stat = ReadProc(process, "stat");
    const std::size_t name = stat.rfind(')');
    if (name == std::string::npos) {
        return 0;
    }
    // The 14th and the 15th value, the name being the second.
    std::istringstream values(stat.substr(name + 1));
    std::string skipped;
    for (int i = 3; i < 14; ++i) {
        values >> skipped;
    }
    double user = 0;
    double system = 0;
    values >> user >> system;
    return (user + system) / kTicksPerSecond;
}

double ProcessorSecondsAtEnd(const Process& process) {
    constexpr milliseconds kBetweenLooks{5};
    double most = 0;
    for (const SteadyTime start = Now(); SecondsSince(start) < 60;) {
        most = std::max(most, ProcessorSeconds(process));
        if (process.WaitForEnd(kBetweenLooks)) {
            return most;
        }
    }
    throw DriveError("a program does not end: " + PathText(process.Program()));
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void PrintFigure(const std::string& row, double figure) {
    std::printf("FIGURE %s %.4f\n", row.c_str(), figure);
    std::fflush(stdout);
}

void PrintRun(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::printf("\n");
    std::fflush(stdout);
}

Cost RunPlain(const Options& options, const std::wstring& arguments) {
    const fs::path result = options.scratch / "plain.txt";
    fs::remove(result);
    const Process plain(options.fixtures.parent_path() / "bench_plain.exe",
                        Quoted(result) + L" " + arguments);
    if (!plain.WaitForEnd(kLongestTransfer) || plain.ExitCode() != 0) {
        throw DriveError("the plain program failed: " + Utf8(arguments));
    }
    Cost cost;
    std::istringstream(ReadWholeFile(result)) >> cost.seconds >> cost.processor;
    return cost;
}

WarmMemory::WarmMemory(int megabytes) {
    constexpr int kPiece = 16;
    for (int held = 0; held < megabytes; held += kPiece) {
        pieces_.emplace_back(static_cast<std::size_t>(kPiece * kMegabyte));
    }
}

void Furnish(const AppFolder& folder, const Options& options, const std::string& server,
             const std::string& moreSettings) {
    folder.Write("tolvex.exe", MainProgram(options, kInstalled));
    folder.Write("filecopy.avi", fixtures::MakeAnimation());
    folder.WriteSettings(server, moreSettings);
}

std::string MainProgram(const Options& options, const std::string& version, std::size_t size) {
    std::string bytes = SampleProgram(options, version);
    if (size > bytes.size()) {
        bytes += Body::Pattern(size).Read(0, size - bytes.size());
    }
    return bytes;
}

void CloseQuietly(const Updater& updater) {
    updater.AwaitEnabled(kCmdClose, kLongestStage);
    if (updater.Checked(kChkRunTolvex)) {
        updater.Press(kChkRunTolvex);
        Await(
            "the empty check box", [&] { return !updater.Checked(kChkRunTolvex); }, kLongestStage);
    }
    updater.Press(kCmdClose);
}

}  // namespace swiftpatch::bench
