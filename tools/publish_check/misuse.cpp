// What the machine in memory reports when the program asks for something that is not there: here
// that is a mistake of ours.
#include "runtime/headless/misuse.h"

#include <cstdlib>
#include <iostream>

namespace swiftpatch::headless {

void ReportMisuse(const std::string& what) {
    std::cerr << "internal error: " << what << "\n";
    std::exit(2);
}

}  // namespace swiftpatch::headless
