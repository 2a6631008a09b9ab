#pragma once

#include <string>
#include <vector>

/// The arguments after the name of what is to be done.
using Arguments = std::vector<std::wstring>;

// What the updater does, done in the plainest way that the platform offers. Each is true when it
// came to its end.

/// SIZE URL FILE: blocks of that size from the network library straight to the disk.
bool ReadInBlocks(const Arguments& arguments);
/// URL FILE: the platform's own download in one call.
bool Fetch(const Arguments& arguments);
/// SOURCE TARGET SOURCE TARGET
bool CopyTwiceAndFlush(const Arguments& arguments);
/// FILE: read, and set once as the text of an edit control.
bool ShowLog(const Arguments& arguments);
/// FIRST ALL: a window for that many milliseconds, and another one for the rest.
bool ShowWindows(const Arguments& arguments);
