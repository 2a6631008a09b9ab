#include "shared/error_report.h"

#include "runtime/msgbox.h"

namespace swiftpatch {

void ReportError(const RuntimeError& error, const std::string& source) {
    MsgBox("Error Number: " + std::to_string(error.Number()) + "\r\n\r\n" + error.Description() +
               "\r\n\r\nSource: " + source,
           msgbox::kInformation);
}

}  // namespace swiftpatch
