#include "publish_check/run.h"

#include <chrono>
#include <filesystem>
#include <new>
#include <ostream>
#include <system_error>

#include "publish_check/command_line.h"
#include "publish_check/folder_server.h"
#include "publish_check/live_server.h"
#include "publish_check/report.h"
#include "publish_check/utf8_path.h"

namespace publish_check {
namespace {

constexpr int kServed = 0;
constexpr int kNotServed = 1;
constexpr int kUnreadable = 2;

swiftpatch::DateTime UtcClock() {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return swiftpatch::DateTime(now.time_since_epoch());
}

/// An address has a scheme, or begins like the name or the number of a host; what is a folder here
/// is taken for that.
bool LooksLikeAddress(const std::string& target) {
    if (target.find("://") != std::string::npos) {
        return true;
    }
    const std::string host = target.substr(0, target.find('/'));
    const bool path = host.empty() || host == "." || host == ".." || host.front() == '~' ||
                      host.find('\\') != std::string::npos;
    constexpr std::size_t kDrive = 2;  // "C:"
    return !path && host.size() > kDrive && host.find_first_of(".:") != std::string::npos &&
           target.find('/') != std::string::npos;
}

ServerState ReadTarget(const std::string& target, bool withSignature) {
    const std::filesystem::path folder = PathOf(target);
    // What the system takes for no name at all is no folder either.
    std::error_code noName;
    if (std::filesystem::is_directory(folder, noName)) {
        return ReadFolder(folder, withSignature);
    }
    if (LooksLikeAddress(target)) {
        return ReadLiveServer(target, withSignature);
    }
    throw std::runtime_error("\"" + target + "\" is neither a folder here nor an address");
}

}  // namespace

int RunPublishCheck(const std::vector<std::string>& arguments, std::ostream& out,
                    std::ostream& errors) {
    try {
        const CommandLine line = ReadCommandLine(arguments);
        if (line.help) {
            out << HelpText();
            return kServed;
        }
        const std::optional<std::string> keys = KeysOfUpdaters(line);
        const ServerState state = ReadTarget(line.target, keys.has_value());
        Assessment assessment = Assess(state, line.installed, UtcClock(), keys);
        assessment.address = line.target;
        out << (line.json ? JsonReport(assessment) : PlainReport(assessment));
        return assessment.Served() ? kServed : kNotServed;
    } catch (const UsageError& error) {
        errors << "publish-check: " << error.what() << "\n" << UsageLine();
    } catch (const std::bad_alloc&) {
        errors << "publish-check: not enough memory for files as large as these\n";
    } catch (const std::exception& error) {
        errors << "publish-check: " << error.what() << "\n";
    }
    return kUnreadable;
}

}  // namespace publish_check
