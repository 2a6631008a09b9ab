// Where the system starts the process. It belongs to the executable, not to the runtime: who takes
// only parts of the runtime has an entry point already.
#include "runtime/win32/run_program.h"
#include "runtime/win32/win32.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*arguments*/,
                   int /*show*/) {
    return swiftpatch::RunProgram();
}
