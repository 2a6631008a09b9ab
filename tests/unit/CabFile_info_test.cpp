#include "unit/CabFile_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class CabFileGetInfo : public CabinetTest {
protected:
    CabFileGetInfo() {
        cab.FileFound = [this](const std::string& name, DateTime time, std::uint32_t size,
                               const std::string& path) {
            EXPECT_EQ(time, MakeDateTime({2026, 3, 10, 12, 16, 14}));
            found.push_back(name + " " + std::to_string(size) + " [" + path + "]");
        };
    }

    std::vector<std::string> found;
};

TEST_F(CabFileGetInfo, GetInfoDescribesEveryFileAndExtractsNone) {
    Add("one.txt", "1");
    Add("a\\b\\two.txt", "22");
    const std::vector<CabFileInfo> infos = cab.GetInfo();
    ASSERT_EQ(infos.size(), 2U);
    EXPECT_EQ(infos[1].fullName, "a\\b\\two.txt");
    EXPECT_EQ(infos[1].name, "two.txt");
    EXPECT_EQ(infos[1].path, "a\\b");
    EXPECT_EQ(infos[1].size, 2U);
    EXPECT_EQ(infos[1].dateTime, MakeDateTime({2026, 3, 10, 12, 16, 14}));
    EXPECT_THAT(found, ElementsAre("one.txt 1 []", "two.txt 2 [a\\b]"));
    EXPECT_THAT(Answers(17), ElementsAre("2", "2"));
    EXPECT_THAT(world.disk.Names(), ElementsAre());
}

TEST_F(CabFileGetInfo, FileToInvestigateSelectsByFullOrBareNameWithoutCase) {
    Add("a\\one.txt");
    Add("two.txt");
    EXPECT_EQ(cab.GetInfo("ONE.TXT").size(), 1U);
    EXPECT_EQ(cab.GetInfo("A/one.txt").size(), 1U);
    EXPECT_THAT(cab.GetInfo("none"), ElementsAre());
    EXPECT_THAT(found, ElementsAre("one.txt 0 [a]", "one.txt 0 [a]"));
}

TEST_F(CabFileGetInfo, GetInfoWithoutAListenerReturnsTheList) {
    Add("one.txt");
    cab.FileFound = {};
    EXPECT_EQ(cab.GetInfo().size(), 1U);
    EXPECT_EQ(cab.GetInfo().size(), 1U);
}

TEST_F(CabFileGetInfo, FileFoundComesFromNothingElse) {
    Add("one.txt");
    cab.FileCount();
    cab.GetXML();
    cab.Extract("C:\\Out");
    EXPECT_THAT(found, ElementsAre());
}

TEST_F(CabFileGetInfo, UnsafeNamesAreDescribedAsTheyStand) {
    Add("..\\con:1");
    EXPECT_EQ(cab.GetInfo()[0].fullName, "..\\con:1");
    EXPECT_THAT(found, ElementsAre("con:1 0 [..]"));
}

TEST_F(CabFileGetInfo, StoredTimeIsTakenAsUniversalTimeAndShownInLocalTime) {
    world.utcOffsetMinutes = 60;
    cab.FileFound = {};
    Add("one.txt");
    EXPECT_EQ(cab.GetInfo()[0].dateTime, MakeDateTime({2026, 3, 10, 13, 16, 14}));
}

TEST_F(CabFileGetInfo, FileWithoutADateHasTheFirstDayOfTheFormat) {
    cabinet.Add(headless::CabinetFile{.name = "x", .bytes = "", .dosDate = 0, .dosTime = 0});
    cab.FileFound = {};
    EXPECT_EQ(cab.GetInfo()[0].dateTime, MakeDateTime({1980, 1, 1}));
}

TEST_F(CabFileGetInfo, XmlIsWrittenToTheLetter) {
    Add("one.txt", std::string(1234567, 'x'));
    Add("a\\b\\two.txt");
    EXPECT_EQ(cab.GetXML(),
              "<?xml version=\"1.0\"?>\r\n"
              "<CABFILE><CABFILENAME>C:\\a.cab</CABFILENAME><FILES>"
              "<FILE><FULLNAME>one.txt</FULLNAME><NAME>one.txt</NAME>"
              "<DATE>2026-03-10 12:16:14</DATE><SIZE>1234567</SIZE><PATH></PATH></FILE>\r\n"
              "<FILE><FULLNAME>a\\b\\two.txt</FULLNAME><NAME>two.txt</NAME>"
              "<DATE>2026-03-10 12:16:14</DATE><SIZE>0</SIZE><PATH>a\\b</PATH></FILE>\r\n"
              "</FILES></CABFILE>");
    EXPECT_THAT(Answers(17), ElementsAre("2", "2"));
}

TEST_F(CabFileGetInfo, XmlOfAnEmptyCabinetHasNoFile) {
    EXPECT_EQ(cab.GetXML(),
              "<?xml version=\"1.0\"?>\r\n"
              "<CABFILE><CABFILENAME>C:\\a.cab</CABFILENAME><FILES></FILES></CABFILE>");
}

TEST_F(CabFileGetInfo, XmlDoesNotGrowWithEachCall) {
    Add("one.txt");
    const std::string first = cab.GetXML();
    EXPECT_EQ(cab.GetXML(), first);
}

TEST_F(CabFileGetInfo, XmlKeepsAmpersandsAndBracketsAsTheyStand) {
    Add("R&D <x>.txt");
    EXPECT_THAT(cab.GetXML(), testing::HasSubstr("<NAME>R&D <x>.txt</NAME>"));
}

TEST_F(CabFileGetInfo, TimesAreWrittenWithLeadingZeros) {
    cabinet.Add(
        headless::CabinetFile{.name = "x", .bytes = "", .dosDate = 0x0021, .dosTime = 0x0821});
    EXPECT_THAT(cab.GetXML(), testing::HasSubstr("<DATE>1980-01-01 01:01:02</DATE>"));
}

}  // namespace
}  // namespace swiftpatch
