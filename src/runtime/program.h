#pragma once

namespace swiftpatch {

/// What the runtime has to know of the program that it serves.
struct ProgramIdentity {
    const char* title;     ///< Stands in the captions of boxes and in requests.
    const char* instance;  ///< How a second instance finds the first.
    int major;
    int minor;
    int revision;
};

// The program defines these two. The runtime uses the first one where it shows a box or sends a
// request, the second one only where it runs the whole program; who needs neither may leave them
// out.

extern const ProgramIdentity kProgram;

/// The start procedure: shows the first window.
void Main();

}  // namespace swiftpatch
