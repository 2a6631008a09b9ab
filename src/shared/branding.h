#pragma once

// What belongs to the main program and to the maker who publishes it: the one place of these names
// and texts. Each can be given when the build is configured (-DSWIFTPATCH_PROGRAM=...), which puts
// it into branding_values.h; these defaults use names and numbers that are reserved for examples
// (RFC 2606, fictitious telephone numbers). The compiler of the resources reads this file too.

#include "shared/branding_values.h"

// Files. What is fetched has the same name on the server and beside the main program.

#ifndef SWIFTPATCH_PROGRAM
#define SWIFTPATCH_PROGRAM "tolvex.exe"
#endif

/// The new build.
#ifndef SWIFTPATCH_STAGED_PROGRAM
#define SWIFTPATCH_STAGED_PROGRAM "tolvex30.exe"
#endif

#ifndef SWIFTPATCH_DATA_FILE
#define SWIFTPATCH_DATA_FILE "tolvex.dta.txt"
#endif

/// A backup is named after it and the version: "tolvex.3.00.11.00.exe".
#ifndef SWIFTPATCH_BACKUP_STEM
#define SWIFTPATCH_BACKUP_STEM "tolvex"
#endif

#ifndef SWIFTPATCH_LICENCE_FILE
#define SWIFTPATCH_LICENCE_FILE "LICENSE.TXT"
#endif

#ifndef SWIFTPATCH_ANIMATION_FILE
#define SWIFTPATCH_ANIMATION_FILE "filecopy.avi"
#endif

/// The updater's own; it runs under any name.
#ifndef SWIFTPATCH_UPDATER_FILE
#define SWIFTPATCH_UPDATER_FILE "swiftpatch.exe"
#endif

/// The updater without a window; it runs under any name, too.
#ifndef SWIFTPATCH_UNATTENDED_FILE
#define SWIFTPATCH_UNATTENDED_FILE "swiftpatch-unattended.exe"
#endif

// What the main program is called in texts.

#ifndef SWIFTPATCH_NAME
#define SWIFTPATCH_NAME "q-Tolvex"
#endif

#ifndef SWIFTPATCH_NAME_IN_TEXT
#define SWIFTPATCH_NAME_IN_TEXT "q-tolvex"
#endif

#ifndef SWIFTPATCH_SHORT_NAME
#define SWIFTPATCH_SHORT_NAME "Tolvex"
#endif

#ifndef SWIFTPATCH_SHORT_NAME_IN_TEXT
#define SWIFTPATCH_SHORT_NAME_IN_TEXT "tolvex"
#endif

/// One word, a part of the names of controls.
#ifndef SWIFTPATCH_NAME_IN_CODE
#define SWIFTPATCH_NAME_IN_CODE "Tolvex"
#endif

/// What can be run on exit.
#ifndef SWIFTPATCH_RUN_NAME
#define SWIFTPATCH_RUN_NAME "q-tolvex.exe"
#endif

/// What has to be closed before an install.
#ifndef SWIFTPATCH_RUNNING_NAME
#define SWIFTPATCH_RUNNING_NAME "q-Tolvex.exe"
#endif

// How it is found while it runs: the class of its windows, a part of their titles, and the name
// under which it leaves its window's handle in the registry ("Defaults", "Last Handle").

#ifndef SWIFTPATCH_WINDOW_CLASS
#define SWIFTPATCH_WINDOW_CLASS "q-Tolvex.exe"
#endif

#ifndef SWIFTPATCH_WINDOW_TITLE
#define SWIFTPATCH_WINDOW_TITLE "q-Tolvex.exe"
#endif

#ifndef SWIFTPATCH_SETTINGS_NAME
#define SWIFTPATCH_SETTINGS_NAME "Closefrm"
#endif

// The updater itself: in its windows, in boxes and requests, and for those that start later.

#ifndef SWIFTPATCH_UPDATER_NAME
#define SWIFTPATCH_UPDATER_NAME "Swift Patch"
#endif

#ifndef SWIFTPATCH_UPDATER_NAME_IN_TEXT
#define SWIFTPATCH_UPDATER_NAME_IN_TEXT "swift patch"
#endif

#ifndef SWIFTPATCH_UPDATER_TITLE
#define SWIFTPATCH_UPDATER_TITLE "SwiftPatch"
#endif

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
