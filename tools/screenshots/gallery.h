#pragma once

#include <optional>
#include <string>

#include "e2e/app_folder.h"
#include "e2e/http_server.h"
#include "e2e/options.h"
#include "e2e/updater.h"

namespace swiftpatch::e2e {

/// Takes a picture of every window and dialog of the updater, in as many runs as it takes to bring
/// them all up. The pictures are PNG files in the scratch folder, called after what they show.
class Gallery {
public:
    explicit Gallery(const Options& options);

    /// Throws DriveError where something to be shown does not come up.
    void Make();

    /// Takes a picture of the splash alone, beside nothing else. Throws DriveError likewise.
    void MakeSplash(const std::string& name);

private:
    void PassThroughAnUpdate();
    void PassThroughACheckThatFindsNothing();
    void PassThroughAFailure();
    void PassThroughABrokenDownload();
    void PassThroughBuildsThatAreNotSigned();
    void PassThroughAWayBack();

    /// Starts the updater in a fresh application folder with these builds in it; an empty version
    /// is none. `kept` is one that was installed before.
    void Start(const std::string& installed, const std::string& staged,
               const std::string& moreSettings = {}, const std::string& kept = {});
    /// The failure dialog of a run that begins with these settings, and its end.
    void PictureOfRefusal(const std::string& name, const std::string& settings);
    /// The server has the maker's signature of that build.
    void PublishSignature(const std::string& build);
    /// The server offers the newer build.
    void Publish(const Reply& build);
    void WatchDownload();
    void Picture(const wchar_t* form, const std::string& name);
    /// Takes a picture of the message box that comes next, and presses one of its buttons.
    void PictureOfBox(const std::string& name, int button);
    void AnswerBox(int button);
    void CloseQuietly();

    const Options& options_;
    HttpServer server_;
    std::optional<AppFolder> folder_;
    std::optional<Updater> updater_;
};

}  // namespace swiftpatch::e2e
