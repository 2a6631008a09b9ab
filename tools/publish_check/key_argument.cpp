#include "publish_check/key_argument.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "publish_check/usage_error.h"
#include "publish_check/utf8_path.h"
#include "signing/signing_keys.h"

namespace publish_check {
namespace {

namespace fs = std::filesystem;

constexpr const char* kConsequence = "; an updater with such a key refuses every update";

/// What the system takes for no name at all is no file either.
bool IsFile(const std::string& argument) {
    std::error_code noName;
    return fs::is_regular_file(PathOf(argument), noName);
}

std::string SecondLine(const std::string& file) {
    std::ifstream stream(PathOf(file), std::ios::binary);
    std::string line;
    std::getline(stream, line);
    std::getline(stream, line);
    if (!stream) {
        return {};
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

}  // namespace

std::string ReadKeyArgument(const std::string& argument) {
    if (!IsFile(argument)) {
        if (!swiftpatch::ParseSigningKeys(argument)) {
            throw UsageError("\"" + argument +
                             "\" is no signing key: that is the second line of a minisign.pub, 56 "
                             "letters, or the name of that file" +
                             kConsequence);
        }
        return argument;
    }
    const std::string key = SecondLine(argument);
    if (!swiftpatch::ParseSigningKeys(key)) {
        // What stands there is not shown: it may be the secret key.
        throw UsageError("the second line of \"" + argument +
                         "\" is no signing key; name the minisign.pub, not the secret key" +
                         kConsequence);
    }
    return key;
}

bool LooksLikeKeyArgument(const std::string& argument) {
    std::error_code noName;
    return IsFile(argument) ||
           (argument.starts_with("RW") && !fs::is_directory(PathOf(argument), noName));
}

void CheckKeysTogether(const std::string& keys) {
    if (!swiftpatch::ParseSigningKeys(keys)) {
        throw UsageError("more than " + std::to_string(swiftpatch::kMostSigningKeys) +
                         " keys: an updater with so many refuses every update");
    }
}

}  // namespace publish_check
