// What must be true at the end of every run, whatever happened in it.
#include <algorithm>

#include "reentry/life.h"
#include "runtime/files.h"
#include "shared/branding.h"
#include "shared/shared_state.h"

namespace swiftpatch::reentry {

void Life::CheckQuietState() {
    if (!WindowThere()) {
        Problem("the main window has not come");
        return;
    }
    const frmSwiftPatch& window = Window();
    if (WorkUnderWay()) {
        Problem("work goes on for ever");
    }
    if (!window.Visible() && !ViewerShown()) {
        Problem("nothing is to be seen");
    }
    if (!window.cmdClose.Enabled) {
        Problem("Close cannot be pressed and nothing is under way: " + Doing());
    }
    if (window.Pointer.Get() != MousePointer::kDefault) {
        Problem("the hourglass stays: " + Doing());
    }
    if (FreeFile() != 1 && !fileLeftOpenDeliberately_) {
        Problem("a file number is left open");
    }
}

void Life::EndByClose() {
    if (ViewerShown()) {
        LeaveViewer();
    }
    if (world_.RunOver() || !WindowThere()) {
        return;
    }
    world_.Click(Window(), Window().cmdClose);
    if (!world_.RunOver()) {
        Problem("Close does not end the run");
    }
}

/// What follows the end is clean-up: windows go and files are closed.
void Life::CheckNothingRanAfterTheEnd() {
    const std::vector<std::string>& lines = world_.trace.Lines();
    auto line = std::find_if(lines.begin(), lines.end(), [](const std::string& each) {
        return each == "End" || each == "frmSwiftPatch.Destroy";
    });
    for (; line != lines.end(); ++line) {
        if (*line != "End" && !line->ends_with(".Destroy") && !line->starts_with("Close #")) {
            Problem("after the end of the run: " + *line);
            return;
        }
    }
}

void Life::CheckFiles() {
    const auto content = [this](const char* name) {
        const headless::File* file = world_.disk.Find(world_.PathOf(name));
        return file == nullptr ? std::string() : file->bytes;
    };
    const std::string installed = content("tolvex.exe");
    const bool missing = installed.empty() && !diskFault_;
    const bool back = shared.OfferBackups && installed == kEarlierBuild;
    if (missing ||
        (!installed.empty() && installed != kOldBuild && installed != kNewBuild && !back)) {
        Problem("tolvex.exe is neither the old nor the new build");
    }
    if (back && content("tolvex.3.00.11.00.exe") != kOldBuild &&
        content("tolvex.3.00.12.05.exe") != kNewBuild) {
        Problem("the build that was gone back from is lost");
    }
    if (shared.OfferBackups && !diskFault_ && content("tolvex.3.00.10.00.exe") != kEarlierBuild) {
        Problem("the build that can be gone back to is lost");
    }
    const std::string prefix = "c:\\tolvex\\";
    const std::set<std::string> known = {"tolvex.dta.txt", "error.log", "filecopy.avi",
                                         "tolvex.exe", "tolvex30.exe"};
    for (const std::string& path : world_.disk.Names()) {
        const std::string& bytes = world_.disk.Find(path)->bytes;
        const std::string name = path.substr(prefix.size());
        const std::map<std::string, std::string> backups = {
            {"tolvex.3.00.10.00.exe", kEarlierBuild},
            {"tolvex.3.00.11.00.exe", kOldBuild},
            {"tolvex.3.00.12.05.exe", kNewBuild}};
        const auto backup = backups.find(name);
        if (backup != backups.end() && bytes != backup->second) {
            Problem("an incomplete backup: " + path);
        } else if (backup == backups.end() && known.count(name) == 0) {
            Problem("an unknown file: " + path);
        }
    }
}

void Life::CheckRequests() {
    for (const std::string& request : world_.network.Requests()) {
        // The data file can go before it is read: then the built-in server is asked.
        const bool known =
            request.find(" http://tolvex.example/files/") != std::string::npos ||
            (diskFault_ && request.find(SWIFTPATCH_DEFAULT_SERVER) != std::string::npos);
        const std::string verb = request.substr(0, request.find(' '));
        const std::string name = request.substr(request.rfind('/') + 1);
        const bool file = name == "tolvex30.exe" || name == "filecopy.avi";
        const bool signature = name == "tolvex30.exe.minisig" && verb == "GET";
        const bool licence = name == "LICENSE.TXT" && verb == "HEAD";
        if (!known || !((file && (verb == "HEAD" || verb == "GET")) || licence || signature)) {
            Problem("an unknown request: " + request);
        }
    }
}

}  // namespace swiftpatch::reentry
