#pragma once

#include "runtime/win32/handle.h"
#include "runtime/win32/system_library.h"

namespace swiftpatch {

/// The functions of the system's http library that the program uses.
struct WinInetLibrary {
    SystemLibrary library{"wininet.dll"};
    LateFunction<decltype(&::HttpOpenRequestA)> HttpOpenRequestA{library, "HttpOpenRequestA"};
    LateFunction<decltype(&::HttpQueryInfoA)> HttpQueryInfoA{library, "HttpQueryInfoA"};
    LateFunction<decltype(&::HttpSendRequestA)> HttpSendRequestA{library, "HttpSendRequestA"};
    LateFunction<decltype(&::InternetCloseHandle)> InternetCloseHandle{library,
                                                                       "InternetCloseHandle"};
    LateFunction<decltype(&::InternetConnectA)> InternetConnectA{library, "InternetConnectA"};
    LateFunction<decltype(&::InternetGetConnectedStateExA)> InternetGetConnectedStateExA{
        library, "InternetGetConnectedStateExA"};
    LateFunction<decltype(&::InternetOpenA)> InternetOpenA{library, "InternetOpenA"};
    LateFunction<decltype(&::InternetQueryOptionA)> InternetQueryOptionA{library,
                                                                         "InternetQueryOptionA"};
    LateFunction<decltype(&::InternetReadFileExA)> InternetReadFileExA{library,
                                                                       "InternetReadFileExA"};
    LateFunction<decltype(&::InternetSetOptionA)> InternetSetOptionA{library, "InternetSetOptionA"};
    LateFunction<decltype(&::InternetSetStatusCallbackA)> InternetSetStatusCallbackA{
        library, "InternetSetStatusCallbackA"};
};

/// Loaded at the first call.
const WinInetLibrary& WinInet();

struct InternetTraits : PointerTraits<HINTERNET> {
    static void Close(Handle handle) { WinInet().InternetCloseHandle(handle); }
};
using UniqueInternet = UniqueHandle<InternetTraits>;

}  // namespace swiftpatch
