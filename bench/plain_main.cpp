// The measure of all things: each of what the updater does, in the plainest way that the platform
// offers, and what that takes.
//
// usage: bench_plain RESULT read|fetch|copy|log|windows ARGUMENT...
//
// Writes two numbers into the file RESULT: seconds by the clock, and of a processor. Ends with 0
// when all went well.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <map>

#include "plain.h"

namespace {

double ProcessorSeconds() {
    FILETIME unused;
    FILETIME kernel;
    FILETIME user;
    GetProcessTimes(GetCurrentProcess(), &unused, &unused, &kernel, &user);
    return (kernel.dwLowDateTime + static_cast<double>(user.dwLowDateTime)) / 1e7;
}

bool MeasureInto(const wchar_t* result, bool (*what)(const Arguments&),
                 const Arguments& arguments) {
    const auto start = std::chrono::steady_clock::now();
    const double before = ProcessorSeconds();
    const bool done = what(arguments);
    const double processor = ProcessorSeconds() - before;
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::FILE* const file = _wfopen(result, L"w");
    if (file == nullptr) {
        return false;
    }
    std::fprintf(file, "%.6f %.6f\n", taken.count(), processor);
    return std::fclose(file) == 0 && done;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const std::map<std::wstring, bool (*)(const Arguments&)> known{{L"read", ReadInBlocks},
                                                                   {L"fetch", Fetch},
                                                                   {L"copy", CopyTwiceAndFlush},
                                                                   {L"log", ShowLog},
                                                                   {L"windows", ShowWindows}};
    const auto found = argc < 3 ? known.end() : known.find(argv[2]);
    if (found == known.end()) {
        return 2;
    }
    return MeasureInto(argv[1], found->second, Arguments(argv + 3, argv + argc)) ? 0 : 1;
}
