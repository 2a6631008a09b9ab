#include "components/clsSysInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class clsSysInfoTest : public testing::Test {
protected:
    /// An instance on a machine of that version.
    clsSysInfo On(std::uint32_t platform, std::uint32_t major, std::uint32_t minor,
                  std::uint32_t build) {
        Record().platform = platform;
        Record().major = major;
        Record().minor = minor;
        Record().build = build;
        return {};
    }
    clsSysInfo WithServicePack(std::string_view text) {
        Record().servicePack = {};
        std::copy(text.begin(), text.end(), Record().servicePack.begin());
        return {};
    }
    clsSysInfo WithSuite(std::uint16_t mask) {
        Record().suiteMask = mask;
        return {};
    }
    OsVersionRecord& Record() { return world.machine.version; }

    headless::World world;
};

/// The flags NT, 2K, XP, 95, 98, ME of an instance, a letter for each.
std::string Flags(const clsSysInfo& info) {
    std::string flags;
    flags += info.IsWinNT() ? 'N' : '-';
    flags += info.IsWin2K() ? '2' : '-';
    flags += info.IsWinXP() ? 'X' : '-';
    flags += info.IsWin95() ? '5' : '-';
    flags += info.IsWin98() ? '8' : '-';
    flags += info.IsWinME() ? 'M' : '-';
    EXPECT_EQ(info.IsWin9x(), info.IsWin95() || info.IsWin98() || info.IsWinME());
    return flags;
}

TEST_F(clsSysInfoTest, AsksOnceForTheExtendedRecord) {
    const clsSysInfo info = On(2, 5, 1, 2600);
    EXPECT_EQ(info.Version(), "Windows XP v5.1, Build 2600");
    EXPECT_EQ(info.MajorVersion(), 5);
    EXPECT_EQ(info.MinorVersion(), 1);
    EXPECT_EQ(info.BuildNumber(), 2600);
    EXPECT_EQ(info.PlatformID(), 2);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("GetVersionEx 156"));
}

TEST_F(clsSysInfoTest, FallsBackToTheBasicRecord) {
    world.machine.largestVersionRecord = 148;
    Record().servicePackMajor = 6;
    Record().servicePackMinor = 1;
    Record().suiteMask = 0x00FF;
    Record().productType = 3;
    WithServicePack("Service Pack 3");
    world.trace.Clear();
    const clsSysInfo info = On(2, 4, 0, 1381);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("GetVersionEx 156", "GetVersionEx 148"));
    EXPECT_EQ(info.Version(), "Windows NT v4.0, Build 1381");
    EXPECT_EQ(info.CSDVersion(), "Service Pack 3");
    EXPECT_EQ(info.ServicePackMajor(), 0);
    EXPECT_EQ(info.ServicePackMinor(), 0);
    EXPECT_EQ(info.SuiteMask(), 0);
    EXPECT_EQ(info.ProductType(), 0);
    EXPECT_EQ(info.ProductTypeName(), "Unknown");
}

TEST_F(clsSysInfoTest, WithoutAnyVersionAllIsZeroAndEmpty) {
    world.machine.largestVersionRecord = 0;
    const clsSysInfo info = On(2, 5, 1, 2600);
    EXPECT_EQ(info.Version(), " v0.0, Build 0");
    EXPECT_EQ(info.Platform(), "");
    EXPECT_EQ(info.PlatformID(), 0);
    EXPECT_EQ(info.CSDVersion(), "");
    EXPECT_EQ(Flags(info), "------");
}

TEST_F(clsSysInfoTest, Windows95FamilyIsToldByMinorVersionAndBuild) {
    EXPECT_EQ(Flags(On(1, 4, 0, 950)), "---5--");
    EXPECT_EQ(On(1, 4, 0, 950).Platform(), "Windows 95");
    EXPECT_EQ(Flags(On(1, 4, 10, 2222)), "---58-");
    EXPECT_EQ(On(1, 4, 10, 2222).Platform(), "Windows 98");
    EXPECT_EQ(Flags(On(1, 4, 90, 3000)), "---58M");
    EXPECT_EQ(On(1, 4, 90, 3000).Platform(), "Windows Me");
}

TEST_F(clsSysInfoTest, BuildIsTheSignedLowWord) {
    EXPECT_EQ(On(1, 4, 10, 0x040A08AE).BuildNumber(), 2222);
    EXPECT_EQ(On(1, 4, 10, 0x040A08AE).Platform(), "Windows 98");
    EXPECT_EQ(On(2, 10, 0, 32767).BuildNumber(), 32767);
    EXPECT_EQ(On(2, 10, 0, 32768).BuildNumber(), -32768);
    EXPECT_EQ(On(2, 10, 0, 0xFFFF).Version(), "Windows 2000 v10.0, Build -1");
    EXPECT_EQ(Flags(On(1, 4, 90, 40000)), "---58-");
}

TEST_F(clsSysInfoTest, NtFamilyIsToldByMajorAndMinorVersion) {
    EXPECT_EQ(Flags(On(2, 4, 0, 1381)), "N-----");
    EXPECT_EQ(On(2, 4, 0, 1381).Platform(), "Windows NT");
    EXPECT_EQ(Flags(On(2, 5, 0, 2195)), "N2----");
    EXPECT_EQ(On(2, 5, 0, 2195).Platform(), "Windows 2000");
    EXPECT_EQ(Flags(On(2, 5, 1, 2600)), "N2X---");
    EXPECT_EQ(On(2, 5, 1, 2600).Platform(), "Windows XP");
    EXPECT_EQ(On(2, 5, 2, 3790).Platform(), "Windows XP");
    EXPECT_EQ(On(2, 6, 0, 6002).Platform(), "Windows 2000");
    EXPECT_EQ(On(2, 6, 1, 7601).Platform(), "Windows XP");
    EXPECT_EQ(On(2, 3, 51, 1057).Platform(), "Windows NT");
}

TEST_F(clsSysInfoTest, OtherPlatformsHaveNoFlag) {
    EXPECT_EQ(Flags(On(0, 5, 1, 3000)), "------");
    EXPECT_EQ(On(3, 5, 1, 3000).Platform(), "");
    EXPECT_EQ(On(3, 5, 1, 3000).Version(), " v5.1, Build 3000");
}

TEST_F(clsSysInfoTest, ServicePackEndsAtItsFirstNulWithoutBlanksAround) {
    EXPECT_EQ(WithServicePack("Service Pack 2").CSDVersion(), "Service Pack 2");
    EXPECT_EQ(WithServicePack(" A ").CSDVersion(), "A");
    EXPECT_EQ(WithServicePack(std::string_view("SP1\0rest", 8)).CSDVersion(), "SP1");
    EXPECT_EQ(WithServicePack(std::string_view("\0rest", 5)).CSDVersion(), "");
    EXPECT_EQ(WithServicePack(std::string_view("x\0rest", 6)).CSDVersion(), "x");
    EXPECT_EQ(WithServicePack("   ").CSDVersion(), "");
}

TEST_F(clsSysInfoTest, ServicePackWithoutANulIsWhole) {
    EXPECT_EQ(WithServicePack(std::string(128, 'p')).CSDVersion(), std::string(128, 'p'));
}

TEST_F(clsSysInfoTest, ServicePackNumbersAndSuiteAreSigned16Bits) {
    Record().servicePackMajor = 2;
    Record().servicePackMinor = 0xFFFF;
    const clsSysInfo info = WithSuite(0x8000);
    EXPECT_EQ(info.ServicePackMajor(), 2);
    EXPECT_EQ(info.ServicePackMinor(), -1);
    EXPECT_EQ(info.SuiteMask(), -32768);
}

TEST_F(clsSysInfoTest, EachSuiteHasItsBit) {
    EXPECT_TRUE(WithSuite(0x0001).HasSBS());
    EXPECT_TRUE(WithSuite(0x0002).HasAS());
    EXPECT_TRUE(WithSuite(0x0004).HasBO());
    EXPECT_TRUE(WithSuite(0x0010).HasTS());
    EXPECT_TRUE(WithSuite(0x0020).HasSBSr());
    EXPECT_TRUE(WithSuite(0x0080).HasDC());
}

TEST_F(clsSysInfoTest, OtherBitsAreNoSuite) {
    const clsSysInfo info = WithSuite(0xFF48);
    EXPECT_FALSE(info.HasSBS() || info.HasAS() || info.HasBO() || info.HasTS() || info.HasSBSr() ||
                 info.HasDC());
    EXPECT_FALSE(WithSuite(0x0100).HasDC());
    EXPECT_FALSE(WithSuite(0x007F).HasDC());
}

TEST_F(clsSysInfoTest, ProductTypesHaveNames) {
    const std::vector<std::string> names{"Unknown", "NT Workstation", "Domain Controller",
                                         "NT Server", ""};
    for (std::uint8_t type = 0; type < names.size(); ++type) {
        Record().productType = type;
        EXPECT_EQ(clsSysInfo().ProductTypeName(), names[type]);
        EXPECT_EQ(clsSysInfo().ProductType(), type);
    }
    Record().productType = 255;
    EXPECT_EQ(clsSysInfo().ProductTypeName(), "");
    EXPECT_EQ(clsSysInfo().ProductType(), 255);
}

TEST_F(clsSysInfoTest, VersionIsReadOnceOnly) {
    const clsSysInfo info = On(2, 5, 1, 2600);
    Record().major = 6;
    EXPECT_EQ(info.MajorVersion(), 5);
    EXPECT_EQ(info.Platform(), "Windows XP");
}

}  // namespace
}  // namespace swiftpatch
