#include "components/cabinet_names.h"

#include <algorithm>
#include <array>

#include "components/join_path.h"
#include "runtime/code_page.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

constexpr std::string_view kSeparators = "\\/";
/// What the system allows in no name. ":" would open a stream of the file or name a drive.
constexpr std::string_view kForbidden = "<>:\"|?*";
constexpr unsigned char kDelete = 0x7F;

bool IsForbidden(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < ' ' || code == kDelete || kForbidden.find(character) != std::string_view::npos;
}

/// The digits of serial and printer ports. The system also takes the superscript digits of its
/// Western code page.
bool IsPortDigit(char character) {
    constexpr std::string_view kDigits = "0123456789\xB9\xB2\xB3";
    return kDigits.find(character) != std::string_view::npos;
}

/// A device keeps its meaning with any extension, and with blanks before that: "nul .txt".
bool IsDevice(std::string_view part) {
    constexpr std::array<std::string_view, 7> kDevices{"CON",    "PRN",     "AUX",   "NUL",
                                                       "CONIN$", "CONOUT$", "CLOCK$"};
    std::string_view base = part.substr(0, part.find('.'));
    base = base.substr(0, base.find_last_not_of(' ') + 1);
    if (base.size() == 4 && IsPortDigit(base[3])) {
        const std::string_view port = base.substr(0, 3);
        return EqualWithoutCase(port, "COM") || EqualWithoutCase(port, "LPT");
    }
    return std::any_of(kDevices.begin(), kDevices.end(),
                       [base](std::string_view device) { return EqualWithoutCase(base, device); });
}

/// The name that the system would give the folder or file; empty when there is no safe one.
std::string_view PlainName(std::string_view part) {
    const std::string masked = MaskTrailBytes(part);
    if (std::any_of(masked.begin(), masked.end(), IsForbidden)) {
        return {};
    }
    // This leaves nothing of "." and "..".
    const std::string_view name = part.substr(0, part.find_last_not_of(". ") + 1);
    return IsDevice(name) ? std::string_view() : name;
}

/// In a form that is the same for all spellings of a name.
std::string Comparable(std::string_view name) { return UpperCase(Replace(name, "/", "\\")); }

}  // namespace

std::string_view BareName(std::string_view nameInCabinet) {
    return nameInCabinet.substr(MaskTrailBytes(nameInCabinet).find_last_of(kSeparators) + 1);
}

std::string_view FolderPart(std::string_view nameInCabinet) {
    const std::size_t separator = MaskTrailBytes(nameInCabinet).find_last_of(kSeparators);
    return separator == std::string_view::npos ? std::string_view()
                                               : nameInCabinet.substr(0, separator);
}

bool IsWanted(std::string_view nameInCabinet, std::string_view wanted) {
    return wanted.empty() || UpperCase(BareName(nameInCabinet)) == UpperCase(wanted) ||
           Comparable(nameInCabinet) == Comparable(wanted);
}

std::optional<std::string> PathUnder(std::string_view output, std::string_view nameInCabinet) {
    const std::string masked = MaskTrailBytes(nameInCabinet);
    std::string relative;
    std::size_t start = 0;
    while (true) {
        const std::size_t separator = masked.find_first_of(kSeparators, start);
        const std::string_view name = PlainName(nameInCabinet.substr(start, separator - start));
        if (name.empty()) {
            return std::nullopt;
        }
        relative += name;
        if (separator == std::string_view::npos) {
            return JoinPath(output, relative);
        }
        relative += '\\';
        start = separator + 1;
    }
}

}  // namespace swiftpatch
