// Measures how long CabFile takes to extract a cabinet, against a bare walk of the platform's
// iterator that extracts the same files.
//
// usage: cabinet_bench CABINET FOLDER       (files of the cabinet without folders)

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "components/CabFile.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/win32.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 9;

UINT CALLBACK ExtractEverything(PVOID context, UINT notification, UINT_PTR param1,
                                UINT_PTR /*param2*/) {
    if (notification != SPFILENOTIFY_FILEINCABINET) {
        return NO_ERROR;
    }
    auto* file = reinterpret_cast<FILE_IN_CABINET_INFO_A*>(param1);
    const std::string target = *static_cast<const std::string*>(context) + file->NameInCabinet;
    std::strncpy(file->FullTargetName, target.c_str(), MAX_PATH - 1);
    return FILEOP_DOIT;
}

void WalkBare(const std::string& cabinet, const std::string& folder) {
    std::string prefix = folder + "\\";
    SetupIterateCabinetA(cabinet.c_str(), 0, ExtractEverything, &prefix);
}

void ExtractWithComponent(const std::string& cabinet, const std::string& folder) {
    swiftpatch::CabFile cab;
    cab.CabName = cabinet;
    cab.Extract(folder);
}

/// Milliseconds of one extraction into an empty folder; what it wrote is removed afterwards.
double Measure(const std::function<void(const std::string&)>& extract, const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
    const auto begun = std::chrono::steady_clock::now();
    extract(folder.string());
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - begun;
    const auto files = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    std::printf("  %td files in %.0f ms\n", files, taken.count());
    fs::remove_all(folder);
    return taken.count();
}

// Each ratio is of two neighbours in time, because the speed of a shared machine drifts.
double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + kRuns / 2, values.end());
    return values[kRuns / 2];
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("usage: cabinet_bench CABINET FOLDER\n", stderr);
        return 2;
    }
    const std::string cabinet = fs::absolute(arguments[1]).make_preferred().string();
    const fs::path folder = fs::absolute(arguments[2]).make_preferred() / "extracted";
    std::vector<double> bare;
    std::vector<double> component;
    std::vector<double> ratios;
    try {
        for (int run = 0; run < kRuns; ++run) {
            bare.push_back(Measure([&](const auto& out) { WalkBare(cabinet, out); }, folder));
            component.push_back(
                Measure([&](const auto& out) { ExtractWithComponent(cabinet, out); }, folder));
            ratios.push_back(component.back() / bare.back());
        }
    } catch (const swiftpatch::RuntimeError& error) {
        std::fprintf(stderr, "cabinet_bench: %s\n", error.what());
        return 1;
    }
    std::printf("bare walk %.0f ms\nCabFile %.0f ms\nCabFile / bare walk %.2f\n", Median(bare),
                Median(component), Median(ratios));
    return 0;
}
