#include "e2e/options.h"

#include <array>

#include "e2e/drive_error.h"
#include "e2e/text.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace fs = std::filesystem;
namespace {

fs::path OwnFolder() {
    std::array<wchar_t, 1024> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data()).parent_path();
}

// "--name=value" gives the value's path; false for another name.
bool TakePath(const std::string& argument, const std::string& name, fs::path& path) {
    const std::string beginning = "--" + name + "=";
    if (!BeginsWith(argument, beginning)) {
        return false;
    }
    path = fs::absolute(Wide(argument.substr(beginning.size()))).make_preferred();
    return true;
}

// The same for a text.
bool TakeText(const std::string& argument, const std::string& name, std::string& text) {
    const std::string beginning = "--" + name + "=";
    if (!BeginsWith(argument, beginning)) {
        return false;
    }
    text = argument.substr(beginning.size());
    return true;
}

// The same for a whole number.
template <class Number>
bool TakeNumber(const std::string& argument, const std::string& name, Number& number) {
    const std::string beginning = "--" + name + "=";
    if (!BeginsWith(argument, beginning)) {
        return false;
    }
    number = static_cast<Number>(std::stoul(argument.substr(beginning.size())));
    return true;
}

}  // namespace

Options ReadOptions(int count, char** arguments) {
    const fs::path own = OwnFolder();
    Options options;
    options.updater = own.parent_path() / "win32-release" / "swiftpatch.exe";
    options.fixtures = own / "fixtures";
    options.scenarios = own.parent_path().parent_path() / "tests" / "scenarios" / "tables";
    options.package = own.parent_path() / "unpacked";
    options.scratch = own / "scratch";
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--auto") {
            options.automatic = true;
        } else if (!TakePath(argument, "updater", options.updater) &&
                   !TakePath(argument, "fixtures", options.fixtures) &&
                   !TakePath(argument, "scenarios", options.scenarios) &&
                   !TakePath(argument, "package", options.package) &&
                   !TakePath(argument, "scratch", options.scratch) &&
                   !TakeText(argument, "server", options.server) &&
                   !TakeText(argument, "proxy", options.proxy) &&
                   !TakeText(argument, "splash", options.splash) &&
                   !TakeNumber(argument, "kills", options.kills) &&
                   !TakeNumber(argument, "installs", options.installs) &&
                   !TakeNumber(argument, "monkey", options.monkeySeconds) &&
                   !TakeNumber(argument, "seed", options.seed)) {
            throw DriveError("unknown argument " + argument);
        }
    }
    options.unattended = options.updater.parent_path() / "swiftpatch-unattended.exe";
    if (options.seed == 0) {
        options.seed = GetTickCount();
    }
    fs::create_directories(options.scratch);
    return options;
}

std::string SampleProgram(const Options& options, const std::string& version) {
    return ReadWholeFile(options.fixtures / ("main_" + version + ".exe"));
}

Options& TestOptions() {
    static Options options;
    return options;
}

}  // namespace swiftpatch::e2e
