#include "publish_check/field_machine.h"

#include <algorithm>

#include "app/settings.h"
#include "install/frmRunning.h"
#include "install/running_program.h"
#include "mainwindow/frmSwiftPatch.h"
#include "publish_check/outcome.h"
#include "runtime/headless/world.h"
#include "runtime/internal/http_address.h"
#include "runtime/internal/http_headers.h"
#include "runtime/runtime_error.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace publish_check {

using swiftpatch::DateTime;
using swiftpatch::frmRunning;
using swiftpatch::frmSwiftPatch;
namespace headless = swiftpatch::headless;

namespace {

constexpr std::int64_t kLongestRun = 600000;  // Milliseconds on the machine's clock.

/// The program on a machine that is made for one run.
class Machine {
public:
    explicit Machine(DateTime now) {
        world.SetLocalTime(now);
        // What was observed is asked of the window; of a large build the trace would be larger.
        world.inEachYield = [this] { world.trace.Clear(); };
        // The published build is on the machine as it is: its signature is that of all its bytes.
        world.versionIn = [](const std::string& bytes) {
            const auto versions = ReadFileVersions(bytes);
            return versions ? PlainText(versions->product) : "";
        };
        swiftpatch::shared = {};
        swiftpatch::WindowHandles.clear();
    }
    ~Machine() {
        frmSwiftPatch::Instance.Release();
        swiftpatch::DeleteForms();
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    headless::World world;
};

std::string DataFile(const std::string& folder) {
    return "[Updates]\r\nServerDownloadPath=" + folder + "\r\n";
}

/// The address as requests name it.
std::string UrlOf(const std::string& folder, const std::string& name) {
    return swiftpatch::UrlOf(swiftpatch::ParseHttpAddress(folder + name));
}

/// Of a body in chunks the updater's platform takes the end of the connection for its end.
bool IsChunked(const Answer& answer) {
    return !swiftpatch::HeaderValue(answer.headers, "Transfer-Encoding").empty();
}

headless::Reply ReplyWith(const Answer& answer) {
    headless::Reply reply;
    reply.status = answer.status;
    reply.headers = answer.headers;
    reply.body = answer.body;
    if (!answer.answered) {
        reply.failure = swiftpatch::error_number::kRequestFailed;
    } else if (!answer.problem.empty() && !(answer.closed && IsChunked(answer))) {
        reply.breakAfter = answer.body.size();
    }
    return reply;
}

void RecordUser(headless::World& world, FieldRun& run) {
    world.user.onAnyBox = [&run](const std::string& text, int style, const std::string&) {
        run.boxes.push_back(text);
        const bool question = (style & swiftpatch::msgbox::kYesNo) != 0;
        return question ? swiftpatch::MsgBoxAnswer::kYes : swiftpatch::MsgBoxAnswer::kOk;
    };
    world.user.onAnyDialog = [&run](swiftpatch::Form& form) {
        if (auto* const dialog = dynamic_cast<frmRunning*>(&form)) {
            run.failures.emplace_back(dialog->Caption.Get(), dialog->message);
        }
        form.Unload();
    };
}

void RecordRequests(const headless::World& world, FieldRun& run) {
    for (const std::string& request : world.network.Requests()) {
        const std::string verb = request.substr(0, request.find(' ') + 1);
        run.requests.push_back(verb + request.substr(request.rfind('/') + 1));
    }
}

bool AtRest(frmSwiftPatch& window) {
    return window.cmdClose.Enabled && !window.Inet1.StillExecuting() &&
           !window.tmrCheckVersion.Enabled;
}

void RecordWindow(frmSwiftPatch& window, FieldRun& run) {
    run.status = window.lblStatus.Caption.Get();
    run.message = window.lblAnimationMsg.Caption.Get();
    run.available = window.lblTolvexVersion.Caption.Get();
    run.caption = window.Caption.Get();
    run.facts = window.check;
    run.outcome = OutcomeOf(window, run);
}

}  // namespace

bool FieldRun::Asked(const std::string& request) const {
    return std::find(requests.begin(), requests.end(), request) != requests.end();
}

void PublishedFolder::Publish() const {
    Publish(swiftpatch::kStagedBuild, state_.build);
    Publish(swiftpatch::kLicenceText, state_.licence);
    Publish(swiftpatch::kBusyAnimation, state_.animation);
    Publish(swiftpatch::kBuildSignature, state_.signature);
}

void PublishedFolder::Publish(const std::string& name, const PublishedFile& file) const {
    const std::string url = UrlOf(state_.address, name);
    headless::TheWorld().network.Answer("HEAD " + url, ReplyWith(file.head));
    headless::TheWorld().network.Answer("GET " + url, ReplyWith(file.get));
}

void FieldMachine::PutBuild(const std::string& name, const std::optional<Version>& version,
                            std::size_t size, DateTime changed) {
    files_[name] = {headless::Build(version ? PlainText(*version) : "", size), changed};
}

void FieldMachine::PutFile(const std::string& name, const std::string& bytes, DateTime changed) {
    files_[name] = {bytes, changed};
}

FieldRun FieldMachine::Run(const PublishedFolder& folder) {
    Machine machine(now_);
    headless::World& world = machine.world;
    files_[swiftpatch::kSettingsFile] = {DataFile(folder.Address()), {}};
    for (const auto& [name, file] : files_) {
        world.disk.Add(world.PathOf(name), file);
    }
    folder.Publish();
    FieldRun run;
    RecordUser(world, run);
    swiftpatch::LoadSettings();
    // In the place of keys that were compiled in too.
    swiftpatch::shared.SigningKeys = keys_;
    frmSwiftPatch& window = frmSwiftPatch::Instance.Get();
    world.Dispatch([&window] { window.Show(); });
    while (!world.RunOver() && !AtRest(window) && world.uptime < kLongestRun) {
        world.PumpFor(10);
    }
    RecordRequests(world, run);
    RecordWindow(window, run);
    files_.clear();
    for (const std::string& path : world.disk.Names()) {
        files_[path.substr(path.rfind('\\') + 1)] = *world.disk.Find(path);
    }
    return run;
}

std::string FolderFromDataFile(const std::string& text) {
    Machine machine({});
    machine.world.AddFile(swiftpatch::kSettingsFile, DataFile(text));
    swiftpatch::LoadSettings();
    return swiftpatch::shared.ServerDownloadPath;
}

}  // namespace publish_check
