#include "app/settings.h"
#include "property.h"
#include "runtime/headless/world.h"
#include "shared/shared_state.h"

namespace swiftpatch::fuzz {
namespace {

constexpr std::size_t kLongestValue = 255;

void CheckSettings(const std::string& dataFile) {
    headless::World world;
    world.AddFile("tolvex.dta.txt", dataFile);
    LoadSettings();
    const std::string& folder = shared.ServerDownloadPath;
    Always(folder.ends_with('/'), "the server folder ends in a slash");
    Always(folder.size() <= kLongestValue + 1, "the server folder is at most 256 characters long");
    Always(shared.LogFileName.size() <= kLongestValue, "a name is at most 255 characters long");
    Always(folder.find('\n') == std::string::npos, "the server folder is of one line");
    LoadSettings();
    Always(folder == shared.ServerDownloadPath, "settings read twice are the same");
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// A data file, and the value of its server folder alone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(swiftpatch::fuzz::TextOf(data, size));
    swiftpatch::fuzz::CheckSettings(input);
    swiftpatch::fuzz::CheckSettings("[Updates]\r\nServerDownloadPath=" + input);
    return 0;
}
