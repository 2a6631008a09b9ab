#include "runtime/program.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

class FullRun : public ProgramTest {};

TEST_F(FullRun, FromSplashToTheStartOfTheNewProgram) {
    world.AddFile("tolvex.dta.txt", "[Updates]\r\nServerDownloadPath=tolvex.example/files\r\n");
    const std::string oldBuild = headless::Build("3.0.11.0", 210000);
    const std::string newBuild = headless::Build("3.0.12.5", 250000);
    world.AddFile("tolvex.exe", oldBuild);
    Publish(newBuild);
    world.user.Answer("The file does not exist.");
    world.user.Answer("A backup file for your current version of tolvex was not found in");

    world.Dispatch([] { Main(); });
    world.PumpFor(30000);
    ASSERT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    world.Click(Window(), Window().cmdInstall);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You have installed the latest version of q-tolvex.");
    world.Click(Window(), Window().cmdClose);

    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.disk.Find(world.PathOf("tolvex.exe"))->bytes, newBuild);
    EXPECT_EQ(world.disk.Find(world.PathOf("tolvex.3.00.11.00.exe"))->bytes, oldBuild);
    EXPECT_TRUE(world.trace.Contains("ShellExecute open C:\\Tolvex\\tolvex.exe 1"));
    EXPECT_EQ(world.network.Requests(),
              (std::vector<std::string>{"HEAD http://tolvex.example/files/tolvex30.exe",
                                        "HEAD http://tolvex.example/files/tolvex30.exe",
                                        "HEAD http://tolvex.example/files/tolvex30.exe",
                                        "GET http://tolvex.example/files/tolvex30.exe"}));
    // A real download is no simulation.
    EXPECT_TRUE(world.trace.StartingWith("lblSimulation").empty());
}

}  // namespace
}  // namespace swiftpatch
