#include "runtime/win32/consent.h"

#include "runtime/internal/consent.h"

namespace swiftpatch {

bool MayRequest(const std::string& /*url*/, const std::string& /*verb*/) { return true; }

bool MayDelete(const std::string& /*path*/) { return true; }

bool MayFind(HWND /*window*/) { return true; }

bool IsThere(const std::string& /*path*/, bool found) { return found; }

}  // namespace swiftpatch
