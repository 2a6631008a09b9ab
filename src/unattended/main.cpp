#include "runtime/console/output.h"
#include "runtime/console/run_program.h"
#include "unattended/command_line.h"
#include "unattended/reporter.h"
#include "unattended/unattended_run.h"

namespace {

using namespace swiftpatch;

int Usage(const std::string& fault) {
    WriteErrors(fault + "\r\n" + UsageLine());
    return static_cast<int>(ExitStatus::kUsage);
}

int Update(const CommandLine& line) {
    Reporter reporter({WriteOutput, ToUtf16, OutputIsTerminal()},
                      line.json ? Reporter::Form::kJson : Reporter::Form::kText, line.quiet);
    UnattendedRun run(line, reporter);
    RunProgram(run);
    const ExitStatus status = run.Status();
    reporter.End(status);
    return static_cast<int>(status);
}

}  // namespace

int main(int count, char* arguments[]) {
    const CommandLine line = ReadCommandLine({arguments + 1, arguments + count});
    if (!line.fault.empty()) {
        return Usage(line.fault);
    }
    if (line.help || line.version) {
        WriteOutput(line.help ? HelpText() : VersionText());
        return 0;
    }
    return Update(line);
}
