#include "runtime/code_page.h"

#include "runtime/win32/win32.h"

namespace swiftpatch {

bool IsLeadByte(char byte) { return ::IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE; }

std::string UpperCase(std::string_view text) {
    std::string capitals(text);
    ::CharUpperBuffA(capitals.data(), static_cast<DWORD>(capitals.size()));
    return capitals;
}

}  // namespace swiftpatch
