#pragma once

// The one place that includes the system's headers. The build sets the oldest system whose
// functions they declare.
// <windows.h> comes first: the others need its types and do not include it.
// clang-format off
#include <windows.h>
#include <commctrl.h>
#include <ole2.h>
#include <olectl.h>
#include <setupapi.h>
#include <shellapi.h>
#include <wininet.h>
// clang-format on

// These macros would rename functions of ours; the system's are called with their suffix A.
#undef DispatchMessage
#undef GetClassName
#undef GetMessage
#undef GetWindowText
#undef PeekMessage
#undef PostMessage
#undef SendMessage
#undef ShellExecute
#undef Yield
