#include "unattended/command_line.h"

#include <algorithm>
#include <array>

#include "runtime/app.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

struct Option {
    const char* name;
    bool CommandLine::*flag;
    const char* help;
};

constexpr std::array kOptions{
    Option{"--check", &CommandLine::check,
           "say whether there is an update; change nothing and fetch no build"},
    Option{"--close-program", &CommandLine::closeProgram,
           "close " SWIFTPATCH_RUNNING_NAME " where that is needed, and start it again"},
    Option{"--go-back", &CommandLine::goBack, "go back to the build that was installed before"},
    Option{"--json", &CommandLine::json, "write one JSON object a line"},
    Option{"--quiet", &CommandLine::quiet, "write only the last line"},
    Option{"--help", &CommandLine::help, "write this"},
    Option{"--version", &CommandLine::version, "write the version"},
};

constexpr std::size_t kHelpColumn = 18;

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (const std::string& argument : arguments) {
        const auto* const option =
            std::find_if(kOptions.begin(), kOptions.end(),
                         [&argument](const Option& each) { return argument == each.name; });
        if (option != kOptions.end()) {
            line.*(option->flag) = true;
        } else if (line.fault.empty()) {
            line.fault = "unknown argument: " + (argument.empty() ? "\"\"" : argument);
        }
    }
    if (line.check && line.goBack && line.fault.empty()) {
        line.fault = "--check and --go-back do not go together";
    }
    return line;
}

std::string UsageLine() {
    std::string line = "usage: " SWIFTPATCH_UNATTENDED_FILE;
    for (const Option& option : kOptions) {
        line += " [" + std::string(option.name) + "]";
    }
    return line + "\r\n";
}

std::string HelpText() {
    std::string text = UsageLine() +
                       "\r\n"
                       "Makes one update run of " SWIFTPATCH_NAME_IN_TEXT
                       " without a window and without a question.\r\n\r\n";
    for (const Option& option : kOptions) {
        std::string name = option.name;
        name.resize(kHelpColumn, ' ');
        text += "  " + name + option.help + "\r\n";
    }
    return text +
           "\r\n"
           "Exit status: 0 nothing to do, 10 installed, 11 an update is ready (--check),\r\n"
           "20 no connection, 21 server or link bad, 22 timed out, 30 the program is running,\r\n"
           "31 it did not close, 40 not signed, 50 disk, 60 another updater is running,\r\n"
           "64 command line, 70 internal error.\r\n";
}

std::string VersionText() {
    return App::Title() + " " + std::to_string(App::Major()) + "." + std::to_string(App::Minor()) +
           "." + std::to_string(App::Revision()) + "\r\n";
}

}  // namespace swiftpatch
