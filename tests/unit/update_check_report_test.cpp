#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

class UpdateCheckReport : public CheckTest {
protected:
    /// The report of a run with a staged build of that date.
    std::string ReportWith(DateTime staged) {
        Offer(250000);
        Stage("3.0.12.5", 250000, staged);
        world.network.Answer(Get(kNewBuild), SilentReply());
        RunCheck(5000);
        return Window().txtDebug.Text;
    }

    static std::string Lines(const std::string& serverDate, const std::string& hours,
                             const std::string& stagedDate, const std::string& age) {
        return "Update Information....\r\n"
               "Date of server file  tolvex30.exe  = " +
               serverDate +
               "\r\n"
               "with GMT offset of " +
               hours +
               " hours.\r\n"
               "Date of app.path tolvex30.exe    = " +
               stagedDate +
               "\r\n"
               "Server Version is:   " +
               age +
               " hours newer.\r\n"
               "Product Version 'C:\\Tolvex\\tolvex30.exe' = 3.00.12.05\r\n"
               "Product Version 'C:\\Tolvex\\tolvex.exe' = 3.00.11.00\r\n"
               "Size of Server      tolvex30.exe  = 250000\r\n"
               "Size of 'C:\\Tolvex\\tolvex30.exe'  = 250000\r\n"
               "Size of 'C:\\Tolvex\\tolvex.exe'  = 210000";
    }
};

TEST_F(UpdateCheckReport, OfANewerServerBuild) {
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 8, 7, 30, 0})),
              Lines("3/10/2026 10:00 AM", "0", "3/8/2026 7:30 AM", "2 days and 2"));
}

TEST_F(UpdateCheckReport, CutsDaysAndHoursToWholeOnes) {
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 9, 10, 1, 0})),
              Lines("3/10/2026 10:00 AM", "0", "3/9/2026 10:01 AM", "0 days and 23"));
}

TEST_F(UpdateCheckReport, OfAnEqualBuild) {
    EXPECT_EQ(ReportWith(serverTime),
              Lines("3/10/2026 10:00 AM", "0", "3/10/2026 10:00 AM", "0 days and 0"));
}

TEST_F(UpdateCheckReport, GivesTheServerDateInLocalTime) {
    world.utcOffsetMinutes = -300;
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 10, 5, 0, 0})),
              Lines("3/10/2026 5:00 AM", "-5", "3/10/2026 5:00 AM", "0 days and 0"));
    EXPECT_EQ(shared.GmtOffset, -300);
}

TEST_F(UpdateCheckReport, GivesHalfHourZonesInWholeHours) {
    world.utcOffsetMinutes = 330;
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 10, 15, 30, 0})),
              Lines("3/10/2026 3:30 PM", "5", "3/10/2026 3:30 PM", "0 days and 0"));
    EXPECT_EQ(shared.GmtOffset, 330);
}

TEST_F(UpdateCheckReport, GivesNegativeHalfHourZonesInWholeHours) {
    world.utcOffsetMinutes = -210;
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 10, 6, 30, 0})),
              Lines("3/10/2026 6:30 AM", "-3", "3/10/2026 6:30 AM", "0 days and 0"));
    EXPECT_EQ(shared.GmtOffset, -210);
}

TEST_F(UpdateCheckReport, GivesTheZoneFarthestEast) {
    world.utcOffsetMinutes = 840;
    EXPECT_EQ(ReportWith(MakeDateTime({2026, 3, 11, 0, 0, 0})),
              Lines("3/11/2026 12:00 AM", "14", "3/11/2026 12:00 AM", "0 days and 0"));
}

TEST_F(UpdateCheckReport, ReadsBothClocksWithinOneSecond) {
    Offer(250000);
    Stage("3.0.12.5", 250000, serverTime);
    const auto requests = [this](std::size_t count) {
        return [this, count] { return world.network.Requests().size() == count; };
    };
    // The first look at the clock falls before a full minute, the second one after it.
    world.When(requests(2), [this] {
        world.SetLocalTime(MakeDateTime({2026, 3, 10, 12, 0, 59}));
        world.localMilliseconds += 500;
        world.clockStep = 400;
    });
    world.When(requests(3), [this] { world.clockStep = 0; });

    RunCheck();

    EXPECT_EQ(shared.GmtOffset, 0);
    EXPECT_GE(world.localMilliseconds % 3600000, 60000);
}

TEST_F(UpdateCheckReport, OfAMissingStagedBuild) {
    Offer(250000);
    world.user.Answer("The file does not exist.");
    world.network.Answer(Get(kNewBuild), SilentReply());

    RunCheck(5000);

    EXPECT_EQ(Window().txtDebug.Text.Get(),
              "Support Information is not available for tolvex30.exe because the comparison file, "
              "'C:\\Tolvex\\tolvex30.exe' is missing.");
}

TEST_F(UpdateCheckReport, OfAnotherFolder) {
    world.machine.applicationFolder = "D:\\Programme f\xFCr alle";
    world.disk.folders.insert(world.machine.applicationFolder);
    world.AddFile("filecopy.avi", "RIFF");
    Offer(250000);
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 210000));
    Stage("3.0.12.5", 250000, serverTime);

    RunCheck();

    EXPECT_NE(Window().txtDebug.Text.Get().find(
                  "\r\nSize of 'D:\\Programme f\xFCr alle\\tolvex30.exe'  = 250000\r\n"),
              std::string::npos);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
}

TEST_F(UpdateCheckReport, IsNotWrittenForABadLink) {
    Offer(79999);
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    world.user.AtDialog("frmRunning", [](Form& form) { form.Unload(); });

    RunCheck();

    EXPECT_EQ(Window().txtDebug.Text.Get(), "");
}

}  // namespace
}  // namespace swiftpatch
