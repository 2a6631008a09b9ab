#include <optional>

#include "mainwindow/version_comparison.h"
#include "property.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::fuzz {
namespace {

/// Empty when the comparison raised an error.
std::optional<std::int16_t> Compare(const std::string& installed, const std::string& offered) {
    try {
        return CompareVersionTexts(installed, offered);
    } catch (const RuntimeError& error) {
        Always(error.Number() == error_number::kSubscriptOutOfRange ||
                   error.Number() == error_number::kTypeMismatch ||
                   error.Number() == error_number::kOverflow,
               "a comparison raises 9, 13 or 6");
        return std::nullopt;
    }
}

void CheckPair(const std::string& installed, const std::string& offered) {
    const auto outcome = Compare(installed, offered);
    if (!outcome) {
        return;
    }
    if (installed.empty()) {
        Always(
            *outcome == (offered.empty() ? comparison::kNothingOffered : comparison::kNewerOffered),
            "without an installed version whatever is offered is newer");
        return;
    }
    Always(*outcome == comparison::kNothingNewer || *outcome == comparison::kNewerOffered,
           "two versions give newer or nothing newer");
    if (*outcome == comparison::kNewerOffered) {
        Always(Compare(offered, installed) == comparison::kNothingNewer,
               "of two different versions only one is newer");
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The installed version on the first line, the offered one after it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const auto fields = fuzz::Fields(fuzz::TextOf(data, size), 2);
    const std::string installed(fields[0]);
    const std::string offered(fields[1]);
    fuzz::CheckPair(installed, offered);
    fuzz::CheckPair(offered, installed);
    if (const auto same = fuzz::Compare(installed, installed); same && !installed.empty()) {
        fuzz::Always(*same == comparison::kNothingNewer, "no version is newer than itself");
    }
    return 0;
}
