#include "publish_check/updater_options.h"

#include "publish_check/key_argument.h"
#include "publish_check/usage_error.h"
#include "shared/branding.h"

namespace publish_check {
namespace {

constexpr const char* kInstalled = "--installed";
constexpr const char* kNoProgram = "none";
constexpr const char* kKeys = "--keys";

std::optional<Installed> ReadInstalled(const std::string& text) {
    if (text == kNoProgram) {
        return Installed{};
    }
    const auto version = ParseVersion(text);
    return version ? std::optional(Installed{version}) : std::nullopt;
}

Installed NeedInstalled(const std::string& text) {
    const auto installed = ReadInstalled(text);
    if (!installed) {
        throw UsageError("\"" + text + "\" is no version: up to four numbers such as 3.0.12.5, " +
                         "each up to 65535, or \"" + kNoProgram + "\"");
    }
    return *installed;
}

void AddKey(const std::string& argument, UpdaterOptions& options) {
    const std::string key = ReadKeyArgument(argument);
    options.keys = options.keys ? *options.keys + " " + key : key;
    CheckKeysTogether(*options.keys);
}

void ReadVersions(const std::vector<std::string>& arguments, std::size_t& at,
                  UpdaterOptions& options) {
    if (++at == arguments.size()) {
        throw UsageError("a version is missing after --installed");
    }
    options.installed.push_back(NeedInstalled(arguments[at]));
    while (at + 1 < arguments.size() && ReadInstalled(arguments[at + 1])) {
        options.installed.push_back(NeedInstalled(arguments[++at]));
    }
}

void ReadKeys(const std::vector<std::string>& arguments, std::size_t& at, UpdaterOptions& options) {
    if (++at == arguments.size()) {
        throw UsageError("a key is missing after --keys");
    }
    AddKey(arguments[at], options);
    while (at + 1 < arguments.size() && LooksLikeKeyArgument(arguments[at + 1])) {
        AddKey(arguments[++at], options);
    }
}

/// What stands behind "--name=".
std::optional<std::string> ValueOf(const std::string& name, const std::string& argument) {
    return argument.starts_with(name + "=") ? std::optional(argument.substr(name.size() + 1))
                                            : std::nullopt;
}

}  // namespace

bool ReadUpdaterOption(const std::vector<std::string>& arguments, std::size_t& at,
                       UpdaterOptions& options) {
    const std::string& argument = arguments[at];
    if (argument == kInstalled) {
        ReadVersions(arguments, at, options);
    } else if (argument == kKeys) {
        ReadKeys(arguments, at, options);
    } else if (const auto version = ValueOf(kInstalled, argument)) {
        options.installed.push_back(NeedInstalled(*version));
    } else if (const auto key = ValueOf(kKeys, argument)) {
        AddKey(*key, options);
    } else {
        return false;
    }
    return true;
}

std::optional<std::string> KeysOfUpdaters(const UpdaterOptions& options) {
    constexpr const char* kCompiledIn = SWIFTPATCH_SIGNING_KEYS;
    return options.keys || *kCompiledIn == '\0' ? options.keys
                                                : std::optional<std::string>(kCompiledIn);
}

}  // namespace publish_check
