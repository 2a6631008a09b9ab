#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "e2e/process.h"

namespace swiftpatch::e2e {

/// Does to a program's windows what a person, a child or the system might do, at random: clicks,
/// keys, closing, the question whether the session may end, resizing, moving of the focus.
class Monkey {
public:
    Monkey(const Process& program, std::mt19937& random) : program_(program), random_(random) {}

    /// One random thing to a random window.
    void Act();

    /// How long the program takes to answer; 0 when it has no window.
    static milliseconds AnswerTime(const Process& program, milliseconds limit);

    /// How often each kind of thing was done, by all monkeys.
    static std::map<std::string, int>& Deeds();

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    HWND Pick(const std::vector<HWND>& windows);
    void Click(HWND window);
    void Press(HWND window);
    void Close(HWND window);
    void AskForTheSession(HWND window);
    void Resize(HWND window);
    void MoveFocus(HWND window);

    const Process& program_;
    std::mt19937& random_;
};

}  // namespace swiftpatch::e2e
