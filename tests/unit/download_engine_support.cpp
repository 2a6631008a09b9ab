#include "unit/download_engine_support.h"

namespace swiftpatch {

void EngineTest::Download(DownloadMode mode, std::int32_t expectedSize,
                          const headless::Reply& reply, std::int64_t milliseconds) {
    world.network.Answer(Get(kNewBuild), Quiet(reply));
    Window().downloadMode = mode;
    Window().expectedSize = expectedSize;
    world.Dispatch([this] { Window().Inet1.Execute(kNewBuild, "GET"); });
    world.PumpFor(milliseconds);
}

void EngineTest::DownloadBuild(std::int32_t expectedSize, const std::string& body) {
    Download(DownloadMode::kBuild, expectedSize, headless::FileReply(body));
}

void EngineTest::InstallSameVersion() { world.AddFile("tolvex.exe", NewBuild(210000)); }

std::vector<std::string> EngineTest::Percentages() const {
    std::vector<std::string> shown;
    const std::string end = " % download completed\"";
    for (const std::string& line : world.trace.StartingWith("lblStatus.Caption = \"")) {
        if (line.ends_with(end)) {
            const std::string text = line.substr(line.find('"') + 1);
            shown.push_back(text.substr(0, text.find(' ')));
        }
    }
    return shown;
}

}  // namespace swiftpatch
