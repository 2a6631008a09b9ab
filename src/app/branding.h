#pragma once

// What belongs to the maker who publishes the main program. Each text can be given when the
// build is configured (-DSWIFTPATCH_DEFAULT_SERVER=...); these defaults use names and numbers that
// are reserved for examples (RFC 2606, fictitious telephone numbers).

/// The server folder where the data file names none: host and path without a scheme, ending in
/// "/download/".
#ifndef SWIFTPATCH_DEFAULT_SERVER
#define SWIFTPATCH_DEFAULT_SERVER "updates.example.com/download/"
#endif

/// Two lines for the splash window.
#ifndef SWIFTPATCH_SLOGAN
#define SWIFTPATCH_SLOGAN "Always the latest version,\r\nnever a lost file."
#endif

#ifndef SWIFTPATCH_WEB_ADDRESS
#define SWIFTPATCH_WEB_ADDRESS "www.example.com"
#endif

#ifndef SWIFTPATCH_COPYRIGHT
#define SWIFTPATCH_COPYRIGHT "Copyright (c) The maker of q-Tolvex.\r\nAll rights reserved."
#endif

/// Telephone number and hours.
#ifndef SWIFTPATCH_SUPPORT_LINE
#define SWIFTPATCH_SUPPORT_LINE "555-0100, Monday to Friday, 9AM to 4PM EST"
#endif
