#include "runtime/form.h"

#include "runtime/headless/peer.h"
#include "runtime/headless/world.h"

namespace swiftpatch {

using headless::TheWorld;

void Form::CreateWindows() {
    AttachPeer(new Peer{TheWorld().nextHandle++});
    TheWorld().trace.Add(Name() + ".Load");
    for (Timer* timer : timers_) {
        TheWorld().TimerChanged(*timer);
    }
}

void Form::ShowWindows() { TheWorld().trace.Add(Name() + ".Show"); }

void Form::HideWindows() { TheWorld().trace.Add(Name() + ".Hide"); }

void Form::DestroyWindows() {
    TheWorld().trace.Add(Name() + ".Destroy");
    for (const Timer* timer : timers_) {
        TheWorld().ForgetTimer(*timer);
    }
    AttachPeer(nullptr);
}

void Form::RunModal() { TheWorld().user.ShowDialog(*this); }

void Form::PaintingChanged() {}

WindowHandle Form::WindowOfForm() const { return peer()->handle; }

PixelSize Form::ScreenSize() { return TheWorld().machine.screen; }

PixelSize Form::WindowSize() const { return {design_.width, design_.height}; }

void Form::MoveWindow(int left, int top) {
    TheWorld().trace.Add(Name() + ".Move " + std::to_string(left) + "," + std::to_string(top));
}

}  // namespace swiftpatch
