#include "components/clsSysInfo.h"

#include <array>

namespace swiftpatch {
namespace {

constexpr std::uint32_t kExtendedRecord = 156;  // sizeof(OSVERSIONINFOEXA)
constexpr std::uint32_t kBasicRecord = 148;     // sizeof(OSVERSIONINFOA)
constexpr std::uint32_t kWindows95Family = 1;   // VER_PLATFORM_WIN32_WINDOWS
constexpr std::uint32_t kNtFamily = 2;          // VER_PLATFORM_WIN32_NT

/// The low 16 bits, signed: 32768 and more become negative.
std::int16_t LoWord(std::uint32_t value) { return static_cast<std::int16_t>(value & 0xFFFF); }

}  // namespace

clsSysInfo::clsSysInfo() {
    ReadVersion();
    CleanServicePack();
    SetFlags();
}

void clsSysInfo::ReadVersion() {
    OsVersionRecord extended;
    extended.recordSize = kExtendedRecord;
    if (GetVersionExA(extended)) {
        version_ = extended;
        return;
    }
    OsVersionRecord basic;
    basic.recordSize = kBasicRecord;
    GetVersionExA(basic);
    version_ = basic;
}

void clsSysInfo::CleanServicePack() {
    servicePack_.assign(version_.servicePack.begin(), version_.servicePack.end());
    servicePack_.resize(std::min(servicePack_.find('\0'), servicePack_.size()));
}

void clsSysInfo::SetFlags() {
    if (version_.platform == kWindows95Family) {
        isWin95_ = true;
        isWin98_ = version_.minor >= 10;
        isWinME_ = LoWord(version_.build) >= 3000;
    }
    // By these rules 5.2 counts as XP and 6.0 as 2000; kept, because callers only ask "at least".
    if (version_.platform == kNtFamily) {
        isWinNT_ = true;
        isWin2K_ = version_.major >= 5;
        isWinXP_ = version_.major >= 5 && version_.minor >= 1;
    }
}

std::int32_t clsSysInfo::BuildNumber() const { return LoWord(version_.build); }

std::string clsSysInfo::CSDVersion() const {
    const std::size_t first = servicePack_.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    return servicePack_.substr(first, servicePack_.find_last_not_of(' ') - first + 1);
}

std::int16_t clsSysInfo::ServicePackMajor() const {
    return static_cast<std::int16_t>(version_.servicePackMajor);
}

std::int16_t clsSysInfo::ServicePackMinor() const {
    return static_cast<std::int16_t>(version_.servicePackMinor);
}

std::int16_t clsSysInfo::SuiteMask() const { return static_cast<std::int16_t>(version_.suiteMask); }

std::string clsSysInfo::Platform() const {
    if (isWinME_) {
        return "Windows Me";
    }
    if (isWin98_) {
        return "Windows 98";
    }
    if (isWin95_) {
        return "Windows 95";
    }
    if (isWinXP_) {
        return "Windows XP";
    }
    if (isWin2K_) {
        return "Windows 2000";
    }
    return isWinNT_ ? "Windows NT" : "";
}

std::string clsSysInfo::Version() const {
    return Platform() + " v" + std::to_string(MajorVersion()) + "." +
           std::to_string(MinorVersion()) + ", Build " + std::to_string(BuildNumber());
}

std::string clsSysInfo::ProductTypeName() const {
    constexpr std::array kNames{"Unknown", "NT Workstation", "Domain Controller", "NT Server"};
    return version_.productType < kNames.size() ? kNames[version_.productType] : "";
}

}  // namespace swiftpatch
