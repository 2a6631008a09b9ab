#include "runtime/os_version.h"

#include "runtime/headless/world.h"

namespace swiftpatch {

using headless::TheWorld;

bool GetVersionExA(OsVersionRecord& record) {
    const OsVersionRecord& version = TheWorld().machine.version;
    TheWorld().trace.Add("GetVersionEx " + std::to_string(record.recordSize));
    if (record.recordSize > TheWorld().machine.largestVersionRecord) {
        return false;
    }
    constexpr std::uint32_t kExtendedRecord = 156;
    const std::uint32_t size = record.recordSize;
    record = version;
    record.recordSize = size;
    if (size < kExtendedRecord) {
        record.servicePackMajor = record.servicePackMinor = record.suiteMask = 0;
        record.productType = 0;
    }
    return true;
}

}  // namespace swiftpatch
