#include "components/sys_info_report.h"

#include <windows.h>

#include <utility>

#include "components/clsSysInfo.h"

namespace swiftpatch::real_system {
namespace {

std::string FlagsOf(const clsSysInfo& info) {
    std::string flags;
    for (const auto& [set, letter] : {std::pair{info.IsWinNT(), 'N'},
                                      {info.IsWin2K(), '2'},
                                      {info.IsWinXP(), 'X'},
                                      {info.IsWin95(), '5'},
                                      {info.IsWin98(), '8'},
                                      {info.IsWinME(), 'M'}}) {
        flags += set ? letter : '-';
    }
    return flags;
}

int ProductOfTheSystem() {
    OSVERSIONINFOEXA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version)) ? version.wProductType : 0;
}

}  // namespace

std::string SysInfoReport() {
    const clsSysInfo info;
    return info.Version() + "|" + std::to_string(info.PlatformID()) + "|" + info.CSDVersion() +
           "|" + std::to_string(info.ServicePackMajor()) + "." +
           std::to_string(info.ServicePackMinor()) + "|" + FlagsOf(info) + "|product " +
           info.ProductTypeName() + "|" + std::to_string(ProductOfTheSystem());
}

}  // namespace swiftpatch::real_system
