#include "app/settings.h"

#include <optional>
#include <string>

#include "runtime/profile.h"
#include "runtime/strings.h"
#include "shared/branding.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kBufferLength = 256;

std::string ReadUpdatesKey(const std::string& key, const std::string& defaultValue) {
    std::string buffer(kBufferLength, '\0');
    const std::size_t count =
        GetPrivateProfileStringA("Updates", key, defaultValue, buffer, AppFile(kSettingsFile));
    return buffer.substr(0, count);
}

std::string ReadServerDownloadPath() {
    std::string value = ReadUpdatesKey("ServerDownloadPath", SWIFTPATCH_DEFAULT_SERVER);
    if (!value.ends_with('/')) {
        value += '/';
    }
    // Only now that the "/" is there: a value that repeats its own key in lower case in front of
    // the folder still gives the bare folder with its trailing "/".
    return Replace(value, "serverdownloadpath=", "");
}

std::optional<std::string> ReadSigningKeys() {
    if (*SWIFTPATCH_SIGNING_KEYS != '\0') {
        return SWIFTPATCH_SIGNING_KEYS;
    }
    // A key that is there without a value is there, and no build passes it: neither a line that was
    // damaged nor a file that cannot be read may switch the protection off. No value of a file can
    // be the end of a line.
    const std::string key = "SigningKeys";
    const std::string absent = "\n";
    const std::string keys = ReadUpdatesKey(key, absent);
    if (keys != absent) {
        return keys;
    }
    return MayHoldKey(key, AppFile(kSettingsFile)) ? std::optional<std::string>("") : std::nullopt;
}

}  // namespace

void LoadSettings() {
    shared.ServerDownloadPath = ReadServerDownloadPath();
    shared.InstallAtOnce = ReadUpdatesKey("InstallAtOnce", "") == "1";
    shared.OfferBackups = ReadUpdatesKey("OfferBackups", "") == "1";
    shared.SigningKeys = ReadSigningKeys();
    shared.LogFileName = ReadUpdatesKey("LogFileName", "");
}

}  // namespace swiftpatch
