#include "runtime/desktop.h"

#include <algorithm>
#include <sstream>

#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using headless::DesktopWindow;
using headless::TheWorld;

const DesktopWindow* Find(WindowHandle handle) {
    const auto& windows = TheWorld().desktop;
    const auto found =
        std::find_if(windows.begin(), windows.end(),
                     [handle](const DesktopWindow& window) { return window.handle == handle; });
    return found == windows.end() ? nullptr : &*found;
}

int CopyText(const std::string& text, std::string& buffer) {
    const std::size_t count = std::min(text.size(), buffer.size() - 1);
    buffer.replace(0, count, text, 0, count);
    return static_cast<int>(count);
}

std::string Hex(std::uint32_t number) {
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

}  // namespace

void EnumWindows(const std::function<bool(WindowHandle)>& callback) {
    TheWorld().trace.Add("EnumWindows");
    for (const DesktopWindow& window : TheWorld().desktop) {
        if (!window.child && !callback(window.handle)) {
            return;
        }
    }
}

int GetClassNameA(WindowHandle window, std::string& buffer) {
    const DesktopWindow* found = Find(window);
    return found == nullptr ? 0 : CopyText(found->className, buffer);
}

int GetWindowTextA(WindowHandle window, std::string& buffer) {
    const DesktopWindow* found = Find(window);
    return found == nullptr ? 0 : CopyText(found->title, buffer);
}

WindowHandle GetParent(WindowHandle window) {
    const DesktopWindow* found = Find(window);
    return found == nullptr ? 0 : found->parent;
}

std::int32_t SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam,
                          std::int32_t lParam) {
    TheWorld().trace.Add("SendMessage " + std::to_string(window) + " " + Hex(message) + " " +
                         Hex(wParam) + " " + std::to_string(lParam));
    const DesktopWindow* found = Find(window);
    return found != nullptr && found->answer ? found->answer(message) : 0;
}

std::int32_t SetWindowPos(WindowHandle window, WindowHandle insertAfter, int x, int y, int width,
                          int height, std::uint32_t flags) {
    std::ostringstream line;
    line << "SetWindowPos " << window << " " << insertAfter << " " << x << " " << y << " " << width
         << " " << height << " " << flags;
    TheWorld().trace.Add(line.str());
    return TheWorld().machine.topMostResult;
}

}  // namespace swiftpatch
