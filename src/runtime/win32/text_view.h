#pragma once

namespace swiftpatch {

/// The window class of a read-only text of any size, with both scroll bars, a selection and the
/// keys of the system's own text box; registered at the first call. It takes WM_SETFONT (a font of
/// equally wide characters), the messages of a window's text, EM_SETSEL, EM_GETSEL,
/// EM_GETLINECOUNT and WM_COPY. The system's text box measures every line before it shows the
/// first, seconds for a long log, and on Windows 95 ends at 64 KiB; this one looks at the lines
/// that are to be seen.
const char* TextViewClass();

}  // namespace swiftpatch
