#pragma once

#include <string>
#include <vector>

#include "e2e/app_folder.h"
#include "e2e/options.h"
#include "e2e/process.h"
#include "e2e/updater.h"
#include "e2e/wait.h"

namespace swiftpatch::bench {

using e2e::milliseconds;
using e2e::SteadyTime;

/// Single runs are compared with their neighbours in time, and the medians of these ratios count,
/// because the speed of a shared machine drifts.
inline constexpr int kRuns = 3;
/// Where the difference looked for is no larger than that between one run and the next.
inline constexpr int kMoreRuns = 9;
inline constexpr double kMegabyte = 1024.0 * 1024.0;
/// Versions of the sample main programs.
inline constexpr char kInstalled[] = "3.0.11.0";
inline constexpr char kOffered[] = "3.0.12.5";
inline constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";
inline constexpr milliseconds kLongestStage{120000};
inline constexpr milliseconds kLongestTransfer{10 * 60 * 1000};

/// What something took, in seconds: by the clock, and of a processor.
struct Cost {
    double seconds = 0;
    double processor = 0;
};

SteadyTime Now();
double SecondsBetween(SteadyTime start, SteadyTime end);
double SecondsSince(SteadyTime start);

/// The processor time that a process has taken up to now, in seconds.
double ProcessorSeconds(const e2e::Process& process);
/// The same at its end, which this waits for. An ended process does not tell any more.
double ProcessorSecondsAtEnd(const e2e::Process& process);

double Median(std::vector<double> values);

/// Hands a figure of the table over to the report.
void PrintFigure(const std::string& row, double figure);
/// Prints a line about a single run.
[[gnu::format(printf, 1, 2)]] void PrintRun(const char* format, ...);

/// Runs bench_plain, which does the same as the updater in the plainest way, and returns what it
/// says that took.
Cost RunPlain(const e2e::Options& options, const std::wstring& arguments);

/// Puts what a run needs into an application folder: the installed main program, the animation, and
/// settings that name the server's folder.
void Furnish(const e2e::AppFolder& folder, const e2e::Options& options, const std::string& server,
             const std::string& moreSettings = {});

/// The sample main program of a version, made longer where `size` asks for that.
std::string MainProgram(const e2e::Options& options, const std::string& version,
                        std::size_t size = 0);

/// Takes the mark off the start of the main program, and closes the updater.
void CloseQuietly(const e2e::Updater& updater);

/// Holds memory that a virtual machine has got from its host, for the cache of files to take when
/// it is let go. The host takes back what has been free for some seconds, and the first write to
/// it then costs ten times the copying. So it is let go right before each of the two sides writes
/// a file that is timed.
class WarmMemory {
public:
    explicit WarmMemory(int megabytes);

private:
    std::vector<std::vector<char>> pieces_;
};

// The rows of the table, each of which prints its figures.
void MeasureDownload(const e2e::Options& options);
void MeasureSecureDownload(const e2e::Options& options);
void MeasureSignedDownload(const e2e::Options& options);
void MeasureMemory(const e2e::Options& options);
void MeasureThrottled(const e2e::Options& options);
void MeasureRequests(const e2e::Options& options);
void MeasureWindows(const e2e::Options& options);
void MeasureInstall(const e2e::Options& options);
void MeasureLog(const e2e::Options& options);

}  // namespace swiftpatch::bench
