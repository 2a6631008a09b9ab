#pragma once

#include <optional>
#include <string>

namespace swiftpatch {

/// What the stages of a run share.
struct SharedState {
    /// The server folder of the new build, ending in "/"; loaded once at start.
    std::string ServerDownloadPath;
    /// Name of the main program's error log in the application folder; empty for none.
    std::string LogFileName;
    /// Install a staged build as soon as it is ready, without a press of the button.
    bool InstallAtOnce = false;
    /// Offer to go back to a build that was installed before.
    bool OfferBackups = false;
    /// The keys of which one has to have signed a build, as the maker wrote them, readable or not.
    /// Without them builds need no signature.
    std::optional<std::string> SigningKeys;
    /// True only while the splash window runs the settings loader.
    bool LoadingPreferences = false;
    /// Local time minus UTC, in minutes.
    double GmtOffset = 0;
    /// Both with a trailing "\"; empty when the look-up failed.
    std::string WindowsDirectory;
    std::string SystemDirectory;
};

inline SharedState shared;

}  // namespace swiftpatch
