#include "publish_check/command_line.h"

namespace publish_check {
namespace {

void SetTarget(const std::string& text, CommandLine& line) {
    if (text.empty()) {
        throw UsageError("the name of the folder is empty");
    }
    if (!line.target.empty()) {
        throw UsageError("more than one folder: \"" + line.target + "\" and \"" + text + "\"");
    }
    line.target = text;
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (ReadUpdaterOption(arguments, i, line)) {
            continue;
        }
        if (argument == "--help" || argument == "-h") {
            line.help = true;
        } else if (argument == "--json") {
            line.json = true;
        } else if (argument.starts_with("-")) {
            throw UsageError("unknown option " + argument);
        } else {
            SetTarget(argument, line);
        }
    }
    if (line.target.empty() && !line.help) {
        throw UsageError("the folder or address to check is missing");
    }
    return line;
}

std::string UsageLine() {
    return "usage: publish-check FOLDER|URL [--installed VERSION ...] [--keys KEY ...] [--json] "
           "[--help]\n";
}

std::string HelpText() {
    return UsageLine() +
           "\n"
           "Says whether the updaters in the field would be served by a server folder: a folder "
           "of\n"
           "this machine before it is published, or a live server's. It reads what is there as an\n"
           "updater does and runs the updater's own check on a machine in memory.\n"
           "\n"
           "  --installed VERSION ...  also say what an updater does beside a main program of "
           "this\n"
           "                           version (3.0.12.5), or beside none (the word \"none\"); "
           "may\n"
           "                           come several times, each with several versions\n"
           "  --keys KEY ...           the updaters install only what was signed with one of "
           "these\n"
           "                           keys: the second line of a minisign.pub (56 letters), or "
           "the\n"
           "                           name of that file; up to four\n"
           "  --json                   write the result for machines\n"
           "  --help                   write this\n"
           "\n"
           "Ends with 0 when every updater would be served, 1 when one would not, 2 when the\n"
           "command line or the folder cannot be read.\n";
}

}  // namespace publish_check
