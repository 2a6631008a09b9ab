#include "runtime/console/attendance.h"

#include <algorithm>
#include <vector>

namespace swiftpatch {
namespace {

struct Attendance {
    Attendant* attendant = nullptr;
    std::vector<Form*> forms;
};

/// Never destroyed: forms that live as long as the program would be destroyed after it.
Attendance& State() {
    static auto& state = *new Attendance;
    return state;
}

}  // namespace

Attendant& TheAttendant() { return *State().attendant; }

void SetAttendant(Attendant& attendant) { State().attendant = &attendant; }

void AddForm(Form& form) { State().forms.push_back(&form); }

void RemoveForm(const Form& form) {
    auto& forms = State().forms;
    forms.erase(std::remove(forms.begin(), forms.end(), &form), forms.end());
}

bool AnyFormLoaded() { return !State().forms.empty(); }

Timer* RunningTimer() {
    for (const Form* form : State().forms) {
        const auto& timers = form->Timers();
        const auto found = std::find_if(timers.begin(), timers.end(), [](const Timer* timer) {
            return timer->Enabled && timer->Interval.Get() > 0;
        });
        if (found != timers.end()) {
            return *found;
        }
    }
    return nullptr;
}

}  // namespace swiftpatch
