// Runs the tests of the real components.
//
// usage: component_tests --cabinets=FOLDER --scratch=FOLDER
//        component_tests --report-version      prints what clsSysInfo says, for a test of its own
#include <cstdio>
#include <string>

#include "components/sys_info_report.h"
#include "win32/run_tests.h"

int main(int argc, char** argv) {
    using namespace swiftpatch::real_system;
    if (argc == 2 && std::string(argv[1]) == "--report-version") {
        std::fputs(SysInfoReport().c_str(), stdout);
        return 0;
    }
    return RunTests(argc, argv);
}
