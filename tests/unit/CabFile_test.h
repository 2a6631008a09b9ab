#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "components/CabFile.h"
#include "runtime/headless/cabinet.h"
#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

/// A test of CabFile on the scripted cabinet C:\a.cab; the folder C:\Out is there.
class CabinetTest : public testing::Test {
protected:
    CabinetTest() {
        world.disk.folders = {"C:", "C:\\Out"};
        cab.CabName = "C:\\a.cab";
    }

    void Add(const std::string& name, const std::string& bytes = "") {
        cabinet.Add(headless::CabinetFile{name, bytes});
    }
    /// The answers that the platform got to a notification, in order.
    std::vector<std::string> Answers(int notification) const {
        const std::string prefix = "Cabinet " + std::to_string(notification) + " -> ";
        std::vector<std::string> answers;
        for (const std::string& line : world.trace.StartingWith(prefix)) {
            answers.push_back(line.substr(prefix.size()));
        }
        return answers;
    }
    std::string BytesOf(const std::string& path) {
        const headless::File* file = world.disk.Find(path);
        return file == nullptr ? "missing" : file->bytes;
    }
    /// A listener of BeforeExtract that does something else than looking at the file.
    static auto BeforeAny(std::function<void()> action) {
        return [action](const std::string&, std::uint32_t, DateTime, const std::string&, bool&) {
            action();
        };
    }

    headless::World world;
    headless::Cabinet cabinet{"C:\\a.cab"};
    CabFile cab;
};

/// The error that `action` raises; number 0 when it raises none.
inline RuntimeError ErrorRaisedBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, "", ""};
}

}  // namespace swiftpatch
