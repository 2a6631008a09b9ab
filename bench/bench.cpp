// Measures the real updater against programs that do the same in the plainest way, from the same
// server and on the same machine. Prints a line for each run, and "FIGURE ROW NUMBER" for the
// report; asserts nothing.
//
// usage: bench [--updater=FILE] [--fixtures=FOLDER] [--scratch=FOLDER] [ROW...]
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <functional>
#include <vector>

#include "measure.h"

namespace {

using namespace swiftpatch::bench;
using swiftpatch::e2e::Options;

struct Row {
    const char* name;
    std::function<void(const Options&)> measure;
};

const std::array kRows{Row{"download", MeasureDownload},
                       Row{"secure", MeasureSecureDownload},
                       Row{"signed", MeasureSignedDownload},
                       Row{"memory", MeasureMemory},
                       Row{"throttled", MeasureThrottled},
                       Row{"requests", MeasureRequests},
                       Row{"windows", MeasureWindows},
                       Row{"install", MeasureInstall},
                       Row{"log", MeasureLog}};

bool IsAsked(const std::vector<std::string>& asked, const std::string& name) {
    return asked.empty() || std::find(asked.begin(), asked.end(), name) != asked.end();
}

void Measure(int argc, char** argv) {
    std::vector<char*> forOptions{argv[0]};
    std::vector<std::string> asked;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') {
            forOptions.push_back(argv[i]);
        } else {
            asked.emplace_back(argv[i]);
        }
    }
    const Options options =
        swiftpatch::e2e::ReadOptions(static_cast<int>(forOptions.size()), forOptions.data());
    swiftpatch::e2e::TestOptions() = options;
    for (const Row& row : kRows) {
        if (IsAsked(asked, row.name)) {
            row.measure(options);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Measure(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: failed: %s\n", error.what());
        return 1;
    }
    return 0;
}
