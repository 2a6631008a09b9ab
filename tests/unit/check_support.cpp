#include "unit/check_support.h"

#include <algorithm>

#include "install/frmRunning.h"

namespace swiftpatch {

using headless::Quoted;

std::string Set(const std::string& property, const std::string& text) {
    return property + " = " + Quoted(text);
}

std::string Box(const std::string& text, int style, const std::string& answer,
                const std::string& title) {
    return "MsgBox " + std::to_string(style) + " " + Quoted(title) + " " + Quoted(text) + " -> " +
           answer;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text.substr(0, text.size() - (text.empty() ? 0 : 1));
}

std::string AnimationStarted() {
    return Joined({"Animation1.AutoPlay = True", "Animation1.Open C:\\Tolvex\\filecopy.avi",
                   "Animation1.Visible = True", "ProgressBar1.Visible = True",
                   Set("lblStatus.Caption", "Initializing update...")});
}

std::string AnimationStopped() {
    return Joined({"Animation1.AutoPlay = False", "Animation1.Stop", "fraMessages.Refresh",
                   "Animation1.Visible = False", "ProgressBar1.Visible = False",
                   Set("lblStatus.Caption", "Update disabled.")});
}

std::string Head(const std::string& url) { return "HEAD " + url; }

std::string Get(const std::string& url) { return "GET " + url; }

headless::Reply Quiet(headless::Reply reply) {
    reply.states.clear();
    return reply;
}

headless::Reply SilentReply() {
    headless::Reply reply;
    reply.states.clear();
    reply.silent = true;
    return reply;
}

headless::Reply LengthReply(const std::string& length) {
    return Quiet(headless::HeaderReply("Content-Length: " + length + "\r\n"));
}

std::string BrokenTransfer(const std::string& numberAndDescription) {
    return "Error # " + numberAndDescription +
           "\r\nThe server or internet connection has timed out.\r\n"
           "Please check your internet connection.";
}

void WindowTest::LoadWindow() {
    world.Dispatch([this] { Window().Show(); });
    Window().tmrCheckVersion.Enabled = false;
    world.trace.Clear();
}

void WindowTest::ExpectReport(const std::string& title, const std::string& text) {
    world.user.AtDialog("frmRunning", [title, text](Form& form) {
        auto& dialog = dynamic_cast<frmRunning&>(form);
        EXPECT_EQ(dialog.Caption.Get(), title);
        EXPECT_EQ(dialog.message, text + "\r\n");
        EXPECT_EQ(dialog.program, "");
        dialog.cmdExit.RaiseClick();
    });
}

std::vector<std::string> WindowTest::StepsFrom(const std::string& first) const {
    std::vector<std::string> steps = Steps();
    steps.erase(steps.begin(), std::find(steps.begin(), steps.end(), first));
    return steps;
}

std::string WindowTest::Content(const std::string& name) {
    const headless::File* file = world.disk.Find(world.PathOf(name));
    return file == nullptr ? "(no such file)" : file->bytes;
}

CheckTest::CheckTest() { world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 210000)); }

void CheckTest::Offer(std::int32_t size, const std::string& lastModified) {
    world.network.Answer(
        Head(kNewBuild),
        Quiet(headless::HeaderReply("Content-Length: " + std::to_string(size) +
                                    "\r\nLast-Modified: " + lastModified + "\r\n")));
}

void CheckTest::Stage(const std::string& version, std::size_t size, DateTime changed) {
    world.AddFile("tolvex30.exe", headless::Build(version, size), changed);
}

std::vector<std::string> CheckTest::CheckSteps() const {
    return StepsFrom("frmSwiftPatch.MousePointer = 11");
}

bool CheckTest::Requested(const std::string& request) const {
    const auto& requests = world.network.Requests();
    return std::find(requests.begin(), requests.end(), request) != requests.end();
}

}  // namespace swiftpatch
