#pragma once

// What belongs to the maker who publishes the main program: the one place of these texts. Each can
// be given when the build is configured (-DSWIFTPATCH_DEFAULT_SERVER=...), which puts it into
// branding_values.h; these defaults use names and numbers that are reserved for examples (RFC 2606,
// fictitious telephone numbers). The compiler of the resources reads this file too.

#include "shared/branding_values.h"

/// The updater's name in boxes and requests.
#ifndef SWIFTPATCH_UPDATER_TITLE
#define SWIFTPATCH_UPDATER_TITLE "SwiftPatch"
#endif

/// What a second instance of it finds the first by.
#ifndef SWIFTPATCH_INSTANCE_NAME
#define SWIFTPATCH_INSTANCE_NAME "SwiftPatch.Instance"
#endif

/// The server folder if the data file names none: host and path without a scheme, ending in
/// "/download/".
#ifndef SWIFTPATCH_DEFAULT_SERVER
#define SWIFTPATCH_DEFAULT_SERVER "updates.example.com/download/"
#endif

/// The keys of which one has to have signed a build: the second line of each minisign.pub, a blank
/// between two. Empty: the data file's, if it has any.
#ifndef SWIFTPATCH_SIGNING_KEYS
#define SWIFTPATCH_SIGNING_KEYS ""
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

/// The version block, which the system shows as the properties of the file; the description is
/// also what its questions and lists of programs call it.
#ifndef SWIFTPATCH_COMPANY
#define SWIFTPATCH_COMPANY "The maker of q-Tolvex"
#endif

#ifndef SWIFTPATCH_FILE_DESCRIPTION
#define SWIFTPATCH_FILE_DESCRIPTION "Updater for q-Tolvex"
#endif

#ifndef SWIFTPATCH_FILE_COPYRIGHT
#define SWIFTPATCH_FILE_COPYRIGHT "Copyright (c) The maker of q-Tolvex. All rights reserved."
#endif
