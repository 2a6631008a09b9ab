#include "runtime/os_version.h"

#include <algorithm>

#include "runtime/win32/nt_family.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

bool GetVersionExA(OsVersionRecord& record) {
    OSVERSIONINFOEXA version{};
    version.dwOSVersionInfoSize = record.recordSize;
    if (!::GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version))) {
        return false;
    }
    record.major = version.dwMajorVersion;
    record.minor = version.dwMinorVersion;
    record.build = version.dwBuildNumber;
    record.platform = version.dwPlatformId;
    std::copy_n(version.szCSDVersion, record.servicePack.size(), record.servicePack.begin());
    record.servicePackMajor = version.wServicePackMajor;
    record.servicePackMinor = version.wServicePackMinor;
    record.suiteMask = version.wSuiteMask;
    record.productType = version.wProductType;
    return true;
}

bool IsNtFamily() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return ::GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

}  // namespace swiftpatch
