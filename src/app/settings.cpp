#include "app/settings.h"

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

}  // namespace

void LoadSettings() {
    shared.ServerDownloadPath = ReadServerDownloadPath();
    shared.InstallAtOnce = ReadUpdatesKey("InstallAtOnce", "") == "1";
    shared.LogFileName = ReadUpdatesKey("LogFileName", "");
}

}  // namespace swiftpatch
