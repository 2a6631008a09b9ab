// The rows about a run in which there is nothing to do: its windows, and what it costs.
#include <algorithm>
#include <thread>

#include "e2e/drive_error.h"
#include "e2e/http_server.h"
#include "e2e/text.h"
#include "measure.h"

namespace swiftpatch::bench {

using namespace e2e;

namespace {

constexpr int kSplashMilliseconds = 3200;

// Looks at the screen itself, because a window can be there long before it is painted.
class Screen {
public:
    ~Screen() { ReleaseDC(nullptr, device_); }
    Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    COLORREF At(POINT place) const { return GetPixel(device_, place.x, place.y); }

private:
    HDC device_ = GetDC(nullptr);
};

POINT MiddleOfScreen() {
    return {GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2};
}

// The colour of the desktop, once nothing covers its middle any more: what a program has shown
// stays there a moment longer than the program.
COLORREF BareDesktop() {
    const Screen screen;
    static const COLORREF kDesktop = screen.At(MiddleOfScreen());
    SteadyTime covered = Now();
    while (SecondsSince(covered) < 0.5) {
        if (screen.At(MiddleOfScreen()) != kDesktop) {
            covered = Now();
        }
        std::this_thread::sleep_for(milliseconds(10));
    }
    return kDesktop;
}

HWND WindowOf(const Process& process, const wchar_t* windowClass) {
    for (const HWND window : VisibleWindowsOf(process.Id())) {
        if (ClassOf(window) == windowClass) {
            return window;
        }
    }
    return nullptr;
}

template <class Condition>
void AwaitClosely(const char* what, Condition condition) {
    const SteadyTime start = Now();
    while (!condition()) {
        if (SecondsSince(start) > 60) {
            throw DriveError(std::string("waited in vain for ") + what);
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
}

// Seconds from the start of a process until its first window can be seen in the middle of the
// screen, and from the end of that window until its second one can be seen.
struct Showing {
    double first = 0;
    double second = 0;
};

bool ShowsItsFace(const Screen& screen, HWND window) {
    POINT corner{3, 3};
    ClientToScreen(window, &corner);
    return window != nullptr && screen.At(corner) == GetSysColor(COLOR_BTNFACE);
}

Showing Watch(const Process& process, SteadyTime start, COLORREF before, const wchar_t* first,
              const wchar_t* second) {
    const Screen screen;
    Showing showing;
    AwaitClosely("the first window", [&] { return screen.At(MiddleOfScreen()) != before; });
    showing.first = SecondsSince(start);
    AwaitClosely("the first window to be there",
                 [&] { return WindowOf(process, first) != nullptr; });
    AwaitClosely("the end of the first window",
                 [&] { return WindowOf(process, first) == nullptr; });
    const SteadyTime gone = Now();
    AwaitClosely("the second window",
                 [&] { return ShowsItsFace(screen, WindowOf(process, second)); });
    showing.second = SecondsSince(gone);
    return showing;
}

struct Run {
    Showing showing;
    Cost cost;
};

// Installed and staged are what the server has.
Run RunProduct(const Options& options) {
    HttpServer server;
    Reply build;
    build.body = Body(MainProgram(options, kInstalled));
    build.lastModified = kServerDate;
    server.On("/upd/tolvex30.exe", build);
    const AppFolder folder(options.scratch / "app", options.updater);
    Furnish(folder, options, server.Host() + "/upd/");
    folder.CopyIn(folder.File("tolvex.exe"), "tolvex30.exe");
    const COLORREF before = BareDesktop();
    const SteadyTime start = Now();
    const Updater updater(folder.Updater());
    Run run;
    run.showing = Watch(updater.Running(), start, before, kSplash, kMain);
    const double beforeClose = ProcessorSeconds(updater.Running());
    CloseQuietly(updater);
    run.cost.processor = std::max(beforeClose, ProcessorSecondsAtEnd(updater.Running()));
    run.cost.seconds = SecondsSince(start);
    return run;
}

// A program that shows one window, and after that another one.
Run RunMinimal(const Options& options, int firstMilliseconds, int allMilliseconds) {
    const std::wstring arguments =
        L"windows " + std::to_wstring(firstMilliseconds) + L" " + std::to_wstring(allMilliseconds);
    const COLORREF before = BareDesktop();
    const SteadyTime start = Now();
    const Process minimal(options.fixtures.parent_path() / "bench_plain.exe",
                          Quoted(options.scratch / "plain.txt") + L" " + arguments);
    Run run;
    if (firstMilliseconds < allMilliseconds) {
        run.showing = Watch(minimal, start, before, L"benchFirst", L"benchSecond");
    }
    run.cost.processor = ProcessorSecondsAtEnd(minimal);
    run.cost.seconds = SecondsSince(start);
    return run;
}

}  // namespace

void MeasureWindows(const Options& options) {
    std::vector<double> first;
    std::vector<double> second;
    std::vector<double> processor;
    for (int run = 1; run <= kRuns; ++run) {
        const Showing minimal =
            RunMinimal(options, kSplashMilliseconds, kSplashMilliseconds + 700).showing;
        const Run product = RunProduct(options);
        const auto whole = static_cast<int>(product.cost.seconds * 1000);
        const Cost waiting = RunMinimal(options, whole, whole).cost;
        PrintRun(
            "nothing to do, milliseconds: start to first window %.0f (minimal program %.0f), "
            "to second window %.0f (%.0f), processor %.0f (%.0f) in %.1f s",
            product.showing.first * 1000, minimal.first * 1000, product.showing.second * 1000,
            minimal.second * 1000, product.cost.processor * 1000, waiting.processor * 1000,
            product.cost.seconds);
        first.push_back((product.showing.first - minimal.first) * 1000);
        second.push_back((product.showing.second - minimal.second) * 1000);
        processor.push_back(product.cost.processor - waiting.processor);
    }
    PrintFigure("nothing-processor", Median(processor));
    PrintFigure("splash-painted", Median(first));
    PrintFigure("main-painted", Median(second));
}

}  // namespace swiftpatch::bench
