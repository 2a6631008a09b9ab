// Measures the real updater's download against a plain loop over the same network library, from
// the same server, and its memory for a small and a large body. Prints ratios and asserts nothing.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <vector>

#include "e2e/app_folder.h"
#include "e2e/options.h"
#include "e2e/process.h"
#include "e2e/text.h"
#include "e2e/updater.h"
#include "fixtures/animation.h"

namespace {

using namespace swiftpatch::e2e;
namespace fs = std::filesystem;

constexpr int kRuns = 3;
constexpr milliseconds kLongestDownload{5 * 60 * 1000};
constexpr milliseconds kLongestStage{60000};
constexpr double kMegabyte = 1024.0 * 1024.0;

struct Measured {
    double seconds = 0;
    double peakMegabytes = 0;
};

double SecondsSince(SteadyTime start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

class Bench {
public:
    explicit Bench(const Options& options)
        : options_(options),
          programs_(options.fixtures.parent_path()),
          addressFile_(options.scratch / "server.txt") {
        fs::remove(addressFile_);
        server_.emplace(programs_ / "bench_server.exe", L"\"" + addressFile_.native() + L"\"");
        Await(
            "the server", [this] { return !Address().empty(); }, kLongestStage);
    }

    Measured Plain(int megabytes) const {
        const fs::path target = options_.scratch / "plain.bin";
        const SteadyTime start = std::chrono::steady_clock::now();
        const Process plain(programs_ / "bench_plain.exe",
                            Wide("http://" + Folder(megabytes) + "tolvex30.exe ") + L"\"" +
                                target.native() + L"\"");
        if (!plain.WaitForEnd(kLongestDownload) || plain.ExitCode() != 0) {
            throw DriveError("the plain download failed");
        }
        const Measured measured{SecondsSince(start),
                                static_cast<double>(plain.PeakWorkingSet()) / kMegabyte};
        CheckSize(target, megabytes);
        fs::remove(target);
        return measured;
    }

    // From the last press of a button before the request to the box about the received file, which
    // is no program.
    Measured Product(int megabytes) const {
        const AppFolder folder(options_.scratch / "app", options_.updater);
        folder.Write("tolvex.exe", ReadWholeFile(options_.fixtures / "main_3.0.11.0.exe"));
        folder.Write("filecopy.avi", swiftpatch::fixtures::MakeAnimation());
        folder.WriteSettings(Folder(megabytes));
        const Updater updater(folder.Updater());
        const Box missing = updater.AwaitMessageBox(kLongestStage);
        const SteadyTime start = std::chrono::steady_clock::now();
        updater.Answer(missing, IDOK);
        const Box corrupt = updater.AwaitMessageBox(kLongestDownload);
        const Measured measured{
            SecondsSince(start),
            static_cast<double>(updater.Running().PeakWorkingSet()) / kMegabyte};
        CheckSize(folder.File("tolvex30.exe"), megabytes);
        return measured;
    }

private:
    std::string Address() const {
        if (!fs::exists(addressFile_)) {
            return {};
        }
        const std::string text = ReadWholeFile(addressFile_);
        return text.substr(0, text.find_last_of('\n') == std::string::npos ? 0 : text.size() - 1);
    }
    std::string Folder(int megabytes) const {
        return Address() + "/" + std::to_string(megabytes) + "/";
    }
    static void CheckSize(const fs::path& file, int megabytes) {
        if (static_cast<double>(fs::file_size(file)) != megabytes * kMegabyte) {
            throw DriveError(PathText(file) + " has not the size of the body");
        }
    }

    const Options& options_;
    fs::path programs_;
    fs::path addressFile_;
    std::optional<Process> server_;
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void CompareSpeed(const Bench& bench, int megabytes) {
    std::vector<double> plain;
    std::vector<double> product;
    std::printf("download of %d MiB, seconds:\n", megabytes);
    for (int run = 1; run <= kRuns; ++run) {
        plain.push_back(bench.Plain(megabytes).seconds);
        product.push_back(bench.Product(megabytes).seconds);
        std::printf("  run %d    plain loop %6.2f   swiftpatch %6.2f   ratio %5.2f\n", run,
                    plain.back(), product.back(), product.back() / plain.back());
        std::fflush(stdout);
    }
    std::printf("  median   plain loop %6.2f   swiftpatch %6.2f   ratio %5.2f\n", Median(plain),
                Median(product), Median(product) / Median(plain));
}

void CompareMemory(const Bench& bench) {
    const double small = bench.Product(1).peakMegabytes;
    const double large = bench.Product(256).peakMegabytes;
    std::printf("largest memory of swiftpatch, MiB:\n");
    std::printf("  body of 1 MiB %6.1f   body of 256 MiB %6.1f   ratio %5.2f\n", small, large,
                large / small);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Options options = ReadOptions(argc, argv);
        const Bench bench(options);
        CompareSpeed(bench, 256);
        CompareMemory(bench);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: failed: %s\n", error.what());
        return 1;
    }
    return 0;
}
