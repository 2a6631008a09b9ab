#pragma once

#include <cstdint>
#include <string>

#include "runtime/os_version.h"

namespace swiftpatch {

/// The operating system's version, read once when an instance is created. No property raises an
/// error: where the system gives no version all numbers are 0, all flags False, all texts empty.
class clsSysInfo {
public:
    clsSysInfo();

    std::int32_t BuildNumber() const;  ///< The low word, signed.
    std::string CSDVersion() const;    ///< The service pack's text without blanks around it.
    std::int32_t MajorVersion() const { return static_cast<std::int32_t>(version_.major); }
    std::int32_t MinorVersion() const { return static_cast<std::int32_t>(version_.minor); }
    std::int32_t PlatformID() const { return static_cast<std::int32_t>(version_.platform); }
    std::int32_t ProductType() const { return version_.productType; }
    std::int16_t ServicePackMajor() const;
    std::int16_t ServicePackMinor() const;
    std::int16_t SuiteMask() const;

    bool HasSBS() const { return HasSuite(0x0001); }   ///< VER_SUITE_SMALLBUSINESS
    bool HasAS() const { return HasSuite(0x0002); }    ///< VER_SUITE_ENTERPRISE
    bool HasBO() const { return HasSuite(0x0004); }    ///< VER_SUITE_BACKOFFICE
    bool HasTS() const { return HasSuite(0x0010); }    ///< VER_SUITE_TERMINAL
    bool HasSBSr() const { return HasSuite(0x0020); }  ///< VER_SUITE_SMALLBUSINESS_RESTRICTED
    bool HasDC() const { return HasSuite(0x0080); }    ///< VER_SUITE_DATACENTER

    bool IsWinXP() const { return isWinXP_; }
    bool IsWin2K() const { return isWin2K_; }
    bool IsWinNT() const { return isWinNT_; }
    bool IsWin95() const { return isWin95_; }  ///< True on every member of the family.
    bool IsWin98() const { return isWin98_; }
    bool IsWinME() const { return isWinME_; }
    bool IsWin9x() const { return isWin95_ || isWin98_ || isWinME_; }

    std::string Platform() const;         ///< For example Windows XP.
    std::string Version() const;          ///< For example Windows XP v5.1, Build 2600.
    std::string ProductTypeName() const;  ///< For example NT Workstation.

private:
    bool HasSuite(std::uint16_t bit) const { return (version_.suiteMask & bit) != 0; }
    void ReadVersion();
    void CleanServicePack();
    void SetFlags();

    OsVersionRecord version_;
    std::string servicePack_;
    bool isWinNT_ = false;
    bool isWin2K_ = false;
    bool isWinXP_ = false;
    bool isWin95_ = false;
    bool isWin98_ = false;
    bool isWinME_ = false;
};

}  // namespace swiftpatch
