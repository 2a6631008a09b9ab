#pragma once

#include <string>

namespace swiftpatch {

// The way back from the installed build to one that was installed before it. No state is kept of
// it: what can be gone back to, and what was gone back from, is what lies in the application
// folder.

/// The name of the file that keeps a build of this version.
std::string BackupName(const std::string& version);

/// True when a whole build of this version is kept. Changes nothing. Waits up to two seconds for
/// another process that lets nobody read it. Does not pump.
bool HasBackup(const std::string& version);

/// The product version of the installed build; empty where there is none. Changes nothing. May wait
/// as HasBackup does.
std::string InstalledProductVersion();

/// The version of the newest whole build that is kept and is below the installed one; empty where
/// there is none. Changes nothing. May wait as HasBackup does.
std::string FindBackup();

/// True where a build of this version is above the installed one and is kept all the same, so that
/// somebody has gone back from it: only a person installs it again. Never where the way back is not
/// offered.
bool WasGoneBackFrom(const std::string& version);

/// Keeps the installed build under its version where no build of that version is kept, so that the
/// way forward stays. Raises the errors of FileCopy, and 75 when its version cannot be read or
/// something else has that name. Does not pump.
void KeepInstalledBuild();

/// Puts the kept build of this version in the place of the installed one, which stays as it is
/// whenever that fails. Raises the errors of LockedFile and FileCopy, and 53 when it is not whole.
/// Does not pump.
void GoBack(const std::string& version);

}  // namespace swiftpatch
