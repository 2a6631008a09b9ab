#include <algorithm>
#include <array>
#include <string>

#include "components/CabFile.h"
#include "components/cabinet_names.h"
#include "property.h"
#include "runtime/headless/cabinet.h"
#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch::fuzz {
namespace {

constexpr const char* kOutput = "C:\\Out";
constexpr const char* kCabinet = "C:\\a.cab";

/// Names that the platform opens as a device whatever folder they stand in.
bool OpensDevice(std::string_view name) {
    constexpr std::array<std::string_view, 4> kDevices{"con", "prn", "aux", "nul"};
    const std::string_view stem = name.substr(0, name.find('.'));
    const std::string_view base = stem.substr(0, stem.find_last_not_of(' ') + 1);
    const bool port =
        base.size() == 4 && base[3] >= '0' && base[3] <= '9' &&
        (EqualWithoutCase(base.substr(0, 3), "com") || EqualWithoutCase(base.substr(0, 3), "lpt"));
    return port || std::any_of(kDevices.begin(), kDevices.end(), [base](std::string_view device) {
               return EqualWithoutCase(base, device);
           });
}

void CheckLevel(std::string_view name) {
    Always(!name.empty(), "no level of a path is empty");
    Always(!name.ends_with('.') && !name.ends_with(' '), "no level ends in a dot or blank");
    Always(name.find_first_of("/<>:\"|?*") == std::string_view::npos,
           "no level is more than a name");
    Always(std::all_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= ' ' && c != '\x7F'; }),
           "no level has control characters");
    Always(!OpensDevice(name), "no level is a device");
}

/// A path that leads from the output folder downwards, level by level.
void CheckIsBelowOutput(std::string_view path) {
    const std::string start = std::string(kOutput) + "\\";
    Always(EqualWithoutCase(path.substr(0, start.size()), start),
           "a target starts with the output folder");
    path.remove_prefix(start.size());
    while (true) {
        const std::size_t end = path.find('\\');
        CheckLevel(path.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        path.remove_prefix(end + 1);
    }
}

void CheckName(std::string_view name) {
    if (const auto target = PathUnder(kOutput, name)) {
        CheckIsBelowOutput(*target);
    }
    const std::string_view bare = BareName(name);
    Always(name.ends_with(bare) && bare.find_first_of("\\/") == std::string_view::npos,
           "a bare name is the last level");
    Always(FolderPart(name).size() + bare.size() <= name.size(), "no level belongs to both parts");
    Always(IsWanted(name, "") && IsWanted(name, name) && IsWanted(name, bare),
           "a file is selected by its names");
}

/// Extracts a cabinet with files of those names and looks at what is on the disk then.
void CheckExtraction(std::string_view names) {
    headless::World world;
    world.disk.folders = {"C:", kOutput};
    headless::Cabinet cabinet(kCabinet);
    for (const std::string& name : Split(names, '\n')) {
        cabinet.Add(headless::CabinetFile{name, "bytes"});
    }
    CabFile file;
    file.CabName = kCabinet;
    try {
        file.Extract(kOutput);
    } catch (const RuntimeError& error) {
        Always(error.Number() == 123 || error.Number() == 111 || error.Number() == 82,
               "a file that cannot be extracted raises 123, 111 or 82");
    }
    for (const std::string& path : world.disk.Names()) {
        CheckIsBelowOutput(path);
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The names of the files in a cabinet, one on a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = swiftpatch::fuzz::TextOf(data, size);
    swiftpatch::fuzz::CheckName(input);
    for (const std::string& name : swiftpatch::Split(input, '\n')) {
        swiftpatch::fuzz::CheckName(name);
    }
    swiftpatch::fuzz::CheckExtraction(input);
    return 0;
}
