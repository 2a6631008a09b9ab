#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mainwindow/frmSwiftPatch.h"
#include "runtime/headless/world.h"

namespace swiftpatch {

/// A test of the program on a scripted machine. Starts with a machine on which everything is in
/// order and nothing but the busy animation is in the application folder.
class ProgramTest : public testing::Test {
protected:
    ProgramTest();
    ~ProgramTest() override;

    static constexpr const char* kFolder = "http://tolvex.example/files/";
    static constexpr const char* kNewBuild = "http://tolvex.example/files/tolvex30.exe";
    static constexpr const char* kLicence = "http://tolvex.example/files/LICENSE.TXT";
    static constexpr const char* kAnimation = "http://tolvex.example/files/filecopy.avi";

    /// The main window, without having been loaded.
    frmSwiftPatch& Window() { return frmSwiftPatch::Instance.Get(); }

    /// Puts `bytes` on the server as the new build.
    void Publish(const std::string& bytes,
                 const std::string& lastModified = "Tue, 10 Mar 2026 10:00:00 GMT");

    /// Shows the main window and runs the check that its timer starts, and what follows from it.
    void RunCheck(std::int64_t milliseconds = 60000);

    /// The lines of the trace from now on, the pumps left out.
    std::vector<std::string> Steps() const;

    headless::World world;
};

/// True when `wanted` stand in `lines` in that order, other lines between them or not.
testing::AssertionResult InOrder(const std::vector<std::string>& lines,
                                 const std::vector<std::string>& wanted);

}  // namespace swiftpatch
