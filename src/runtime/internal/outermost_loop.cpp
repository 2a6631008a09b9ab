#include "runtime/internal/outermost_loop.h"

#include <exception>
#include <new>

#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/form.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

void RunOutermost(void (*loop)(), void (*report)(const RuntimeError&)) {
    try {
        loop();
    } catch (const EndProgram&) {
        // The usual end.
    } catch (const RuntimeError& error) {
        report(error);
    } catch (const std::bad_alloc&) {
        report(RuntimeError(7, "Out of memory"));
    } catch (const std::exception&) {
        report(RuntimeError(51, "Internal error"));
    }
    EndRunAtNextPump();
    CloseAllFiles();
    DeleteForms();
}

}  // namespace swiftpatch
