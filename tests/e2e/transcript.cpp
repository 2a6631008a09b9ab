#include "e2e/transcript.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "e2e/text.h"
#include "e2e/window_view.h"

namespace swiftpatch::e2e {
namespace {

// A message box has no names for its parts.
std::string PartName(const std::wstring& form, HWND part) {
    if (form != kMessageBoxClass) {
        return NameOf(form, GetDlgCtrlID(part));
    }
    return ClassOf(part) == L"Static" ? "text" : "button";
}

std::string Readable(const std::string& form) {
    return form == Utf8(kMessageBoxClass) ? "message box" : form;
}

}  // namespace

Transcript::Transcript(DWORD process, const HttpServer& server)
    : process_(process), server_(server), start_(std::chrono::steady_clock::now()) {
    watcher_ = std::thread([this] { Watch(); });
}

Transcript::~Transcript() { Stop(); }

void Transcript::Stop() {
    stopping_ = true;
    if (watcher_.joinable()) {
        watcher_.join();
    }
}

void Transcript::Watch() {
    constexpr milliseconds kBetweenLooks{15};
    while (!stopping_) {
        Look();
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

void Transcript::Look() {
    for (auto& [window, seen] : seen_) {
        seen.current = false;
    }
    const std::vector<HWND> windows = VisibleWindowsOf(process_);
    for (const HWND window : windows) {
        const std::wstring form = ClassOf(window);
        LookAt(window, form, {});
        for (const HWND part : WindowsInside(window)) {
            if (IsWindowVisible(part) != 0) {
                LookAt(part, form, PartName(form, part));
            }
        }
    }
    DropWhatIsGone();
    const std::lock_guard lock(mutex_);
    known_ = {windows.begin(), windows.end()};
}

bool Transcript::HasSeen(HWND window) const {
    const std::lock_guard lock(mutex_);
    return known_.count(window) != 0;
}

void Transcript::LookAt(HWND window, const std::wstring& form, const std::string& control) {
    const std::optional<std::string> answer = AskText(window);
    if (!answer || IsWindowVisible(window) == 0) {
        return;  // It is going; the next look will not find it.
    }
    const std::string& text = *answer;
    const auto [place, isNew] = seen_.try_emplace(window);
    Seen& seen = place->second;
    seen.current = true;
    if (isNew || seen.text != text) {
        seen = {Utf8(form), control, text, true};
        if (!isNew || !text.empty() || control.empty()) {
            Add(seen.form, control, text);
        }
    }
}

void Transcript::DropWhatIsGone() {
    for (auto place = seen_.begin(); place != seen_.end();) {
        if (place->second.current) {
            ++place;
            continue;
        }
        if (!place->second.text.empty() || place->second.control.empty()) {
            Add(place->second.form, place->second.control, kGone);
        }
        place = seen_.erase(place);
    }
}

void Transcript::Add(const std::string& form, const std::string& control, const std::string& text) {
    const std::lock_guard lock(mutex_);
    events_.push_back({std::chrono::steady_clock::now(), form, control, text});
}

void Transcript::Note(const std::string& text) { Add("", "", text); }

std::string Transcript::Line(SteadyTime time, const std::string& text) const {
    const double sinceStart = std::chrono::duration<double>(time - start_).count();
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%8.3f  ", sinceStart);
    return stamp + text + "\n";
}

std::string Transcript::Lines() const {
    std::vector<std::pair<SteadyTime, std::string>> lines;
    {
        const std::lock_guard lock(mutex_);
        for (const Event& event : events_) {
            const std::string what =
                event.form.empty() ? event.text
                                   : Readable(event.form) + (event.control.empty() ? "" : " ") +
                                         event.control + ": " + OneLine(event.text);
            lines.emplace_back(event.time, what);
        }
    }
    for (const Request& request : server_.Requests()) {
        lines.emplace_back(request.time, "request " + request.Line() + " (connection " +
                                             std::to_string(request.connection) + ")");
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string all;
    for (const auto& [time, text] : lines) {
        all += Line(time, text);
    }
    return all;
}

std::vector<std::string> Transcript::TextsOf(const Control& control) const {
    const std::string form = Utf8(control.form);
    const std::lock_guard lock(mutex_);
    std::vector<std::string> texts;
    for (const Event& event : events_) {
        if (event.form == form && event.control == control.name) {
            texts.push_back(event.text);
        }
    }
    return texts;
}

std::vector<std::string> Transcript::Windows() const {
    const std::lock_guard lock(mutex_);
    std::vector<std::string> windows;
    for (const Event& event : events_) {
        if (!event.form.empty() &&
            std::find(windows.begin(), windows.end(), event.form) == windows.end()) {
            windows.push_back(event.form);
        }
    }
    return windows;
}

}  // namespace swiftpatch::e2e
