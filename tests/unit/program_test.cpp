#include "unit/program_test.h"

#include "app/frmSplash1.h"
#include "install/running_program.h"
#include "shared/shared_state.h"

namespace swiftpatch {

ProgramTest::ProgramTest() {
    shared = {};
    shared.ServerDownloadPath = "tolvex.example/files/";
    WindowHandles.clear();
    world.AddFile("filecopy.avi", "RIFF");
}

ProgramTest::~ProgramTest() {
    frmSwiftPatch::Instance.Release();
    frmSplash1::Instance.Release();
    DeleteForms();
}

void ProgramTest::Publish(const std::string& bytes, const std::string& lastModified) {
    const headless::Reply reply = headless::FileReply(bytes, lastModified);
    const std::string url = kNewBuild;
    world.network.Answer("HEAD " + url, reply);
    world.network.Answer("GET " + url, reply);
}

void ProgramTest::RunCheck(std::int64_t milliseconds) {
    world.Dispatch([this] { Window().Show(); });
    world.PumpFor(milliseconds);
}

std::vector<std::string> ProgramTest::Steps() const {
    std::vector<std::string> steps;
    for (const std::string& line : world.trace.Lines()) {
        if (!line.starts_with("DoEvents")) {
            steps.push_back(line);
        }
    }
    return steps;
}

testing::AssertionResult InOrder(const std::vector<std::string>& lines,
                                 const std::vector<std::string>& wanted) {
    auto at = lines.begin();
    for (const std::string& line : wanted) {
        at = std::find(at, lines.end(), line);
        if (at == lines.end()) {
            return testing::AssertionFailure() << "not there, or not in its place: " << line
                                               << "\nin " << testing::PrintToString(lines);
        }
        ++at;
    }
    return testing::AssertionSuccess();
}

}  // namespace swiftpatch
