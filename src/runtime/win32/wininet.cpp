#include "runtime/win32/wininet.h"

namespace swiftpatch {

const WinInetLibrary& WinInet() {
    static const WinInetLibrary library;
    return library;
}

}  // namespace swiftpatch
