#include "runtime/internal/consent.h"

#include "runtime/console/attendance.h"
#include "runtime/win32/consent.h"

namespace swiftpatch {

bool MayRequest(const std::string& url, const std::string& verb) {
    return TheAttendant().MayRequest(url, verb);
}

bool MayDelete(const std::string& path) { return TheAttendant().MayDelete(path); }

bool IsThere(const std::string& path, bool found) { return TheAttendant().IsThere(path, found); }

}  // namespace swiftpatch
