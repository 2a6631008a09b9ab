#include "publish/command_line.h"

#include "publish/upload.h"
#include "publish_check/key_argument.h"
#include "publish_check/usage_error.h"
#include "publish_check/utf8_path.h"

namespace publish {

using publish_check::PathOf;
using publish_check::UsageError;

namespace {

/// The argument behind the option at `at`, which is moved there.
const std::string& Value(const std::vector<std::string>& arguments, std::size_t& at,
                         const std::string& what) {
    const std::string& option = arguments[at];
    if (++at == arguments.size() || arguments[at].empty()) {
        throw UsageError(what + " is missing after " + option);
    }
    return arguments[at];
}

bool ReadSwitch(const std::string& argument, Order& order) {
    if (argument == "--help" || argument == "-h") {
        order.help = true;
    } else if (argument == "--json") {
        order.json = true;
    } else if (argument == "--dry-run") {
        order.dryRun = true;
    } else if (argument == "--roll-back") {
        order.rollBack = true;
    } else {
        return false;
    }
    return true;
}

bool ReadOption(const std::vector<std::string>& arguments, std::size_t& at, Order& order) {
    const std::string& argument = arguments[at];
    if (argument == "--key") {
        order.secretKeys.push_back(Value(arguments, at, "the file of a secret key"));
    } else if (argument == "--to") {
        const std::string& text = Value(arguments, at, "a version");
        order.backTo = publish_check::ParseVersion(text);
        if (!order.backTo) {
            throw UsageError("\"" + text + "\" is no version");
        }
    } else if (argument == "--upload") {
        order.upload = Value(arguments, at, "a command");
    } else if (argument == "--address") {
        order.address = Value(arguments, at, "an address");
    } else if (argument.starts_with("-")) {
        throw UsageError("unknown option " + argument);
    } else {
        return false;
    }
    return true;
}

void SetPlace(const std::string& argument, Order& order) {
    if (argument.empty()) {
        throw UsageError("the name of a file or folder is empty");
    }
    if (order.folder.empty()) {
        order.folder = PathOf(argument);
    } else if (order.build.empty()) {
        order.build = PathOf(argument);
    } else {
        throw UsageError("more than a folder and a build: \"" + argument + "\"");
    }
}

/// minisign writes both keys of a pair beside each other.
void TakeKeysBesideSecretOnes(Order& order) {
    for (const std::string& secret : order.secretKeys) {
        const std::filesystem::path beside = PathOf(secret).replace_extension(".pub");
        if (!std::filesystem::is_regular_file(beside)) {
            throw UsageError("there is no \"" + publish_check::Utf8(beside) +
                             "\" beside the secret key: name the keys of the updaters with --keys, "
                             "so that the signature can be checked");
        }
        const std::string key = publish_check::ReadKeyArgument(publish_check::Utf8(beside));
        order.keys = order.keys ? *order.keys + " " + key : key;
    }
    if (order.keys) {
        publish_check::CheckKeysTogether(*order.keys);
    }
}

/// There the quotes that a name gets would end those around it.
bool StandsInQuotes(const std::string& command, std::size_t place) {
    char open = 0;
    for (std::size_t at = 0; at < place && place != std::string::npos; ++at) {
        const char letter = command[at];
        if (open == letter) {
            open = 0;
        } else if (open == 0 && (letter == '\'' || letter == '"')) {
            open = letter;
        }
    }
    return open != 0;
}

void CheckUploadCommand(const std::string& command) {
    if (command.find(kFilePlace) == std::string::npos) {
        throw UsageError(std::string("the command to upload with has no ") + kFilePlace +
                         " where the name of the file belongs");
    }
    for (const char* place : {kFilePlace, kNamePlace}) {
        if (StandsInQuotes(command, command.find(place))) {
            throw UsageError(std::string(place) +
                             " is quoted already: it cannot stand between quotes");
        }
    }
}

void CheckTogether(const Order& order) {
    if (order.folder.empty()) {
        throw UsageError("the server folder is missing");
    }
    if (order.rollBack != order.build.empty()) {
        throw UsageError(order.rollBack ? "--roll-back takes a build that was kept, and no other"
                                        : "the build is missing");
    }
    if (order.backTo && !order.rollBack) {
        throw UsageError("--to goes with --roll-back");
    }
    if (!order.upload.empty()) {
        CheckUploadCommand(order.upload);
    }
}

}  // namespace

Order ReadCommandLine(const std::vector<std::string>& arguments) {
    Order order;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!ReadUpdaterOption(arguments, i, order) && !ReadSwitch(argument, order) &&
            !ReadOption(arguments, i, order)) {
            SetPlace(argument, order);
        }
    }
    if (order.help) {
        return order;
    }
    CheckTogether(order);
    order.keys = KeysOfUpdaters(order);
    order.keysAreNamed = order.keys.has_value();
    if (!order.keys) {
        TakeKeysBesideSecretOnes(order);
    }
    return order;
}

std::string UsageLines() {
    return "usage: publish FOLDER BUILD [--key FILE ...] [OPTION ...]\n"
           "       publish --roll-back FOLDER [--to VERSION] [OPTION ...]\n";
}

std::string HelpText() {
    return UsageLines() + R"(
Puts a build into the folder that updaters fetch from, so that each of them gets the old build or
the new one at any moment. First it checks, with the rules of publish-check, what the updaters in
the field would do. The build that was there is kept in previous/VERSION. --roll-back brings a kept
build back: that of --to, or the one with the next lower version that was not rolled back from.
FOLDER and BUILD stand in front of --keys and --installed, which take all that looks like theirs.

  --key FILE               sign the build with this secret key of minisign, which asks for its
                           password; may come several times. Without it the signature beside the
                           build is taken (BUILD.minisig), which a kept build has
  --keys KEY ...           the keys of the updaters, as for publish-check; if left out, those
                           beside the secret keys (work.pub beside work.key)
  --installed VERSION ...  the versions in the field; if left out, those of the builds that are in
                           the folder and were kept
  --upload COMMAND         FOLDER is a copy of what is on the server: each file is handed to this
                           command first, which gets its path for {file} and its name for {name},
                           both quoted
  --address URL            look at the server in the end
  --dry-run                say what would be done, and change nothing
  --json                   write the result for machines
  --help                   write this

Ends with 0 when the build is published, 1 when it is not and the folder is as it was, 2 when the
command line cannot be read, 3 when it is published and the server does not serve it.
)";
}

}  // namespace publish
