#include <gtest/gtest.h>

#include "components/cab_outcome.h"
#include "components/cab_writer.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr std::int32_t kInvalidName = 123;  // ERROR_INVALID_NAME

/// Names that lead out of the output folder or are no plain files.
std::vector<std::string> HostileNames(const Workplace& place) {
    const std::string outside = place.PathOf("outside.txt");
    return {"..\\outside.txt",
            "../outside.txt",
            "a\\..\\..\\outside.txt",
            ".. \\outside.txt",
            "..\\..\\outside.txt",
            "\\outside.txt",
            "/outside.txt",
            outside,
            "\\\\?\\" + outside,
            "\\\\.\\" + outside,
            outside.substr(0, 2) + "outside.txt",
            "inside.txt:stream",
            "CON",
            "nul",
            "NUL.txt",
            "aux .txt",
            "COM1",
            "LPT1.log",
            "CONOUT$",
            "a\nb",
            "a\x01",
            "a\x7F",
            "a*b",
            "a<b",
            ". .",
            "a\\\\b",
            "folder\\"};
}

TEST(CabFileNames, HostileNameFailsItsFileAndNothingIsWrittenForIt) {
    const Workplace place;
    for (const std::string& name : HostileNames(place)) {
        CabImage image;
        AddFile(image, "first.txt", "1");
        AddFile(image, name, "evil");
        AddFile(image, "last.txt", "2");
        CabFile cab = Cab(place.Put("a.cab", image.Bytes()));
        const auto before = place.Beside();
        const Outcome outcome = OutcomeOf([&] { cab.Extract(place.Out()); });
        EXPECT_EQ(outcome.number, kInvalidName) << testing::PrintToString(name);
        EXPECT_EQ(Tree(place.Out()),
                  (std::map<std::string, std::string>{{"first.txt", "1"}, {"last.txt", "2"}}))
            << testing::PrintToString(name);
        EXPECT_TRUE(place.Beside() == before) << testing::PrintToString(name);
        EXPECT_EQ(cab.FileCount(), 3);
        place.EmptyOut();
    }
    EXPECT_FALSE(std::filesystem::exists("\\outside.txt"));
    EXPECT_FALSE(std::filesystem::exists("outside.txt"));
}

TEST(CabFileNames, AmpersandAndBracketsStandInTheXmlUnchanged) {
    const Workplace place;
    CabFile cab = Cab((TestFolders().cabinets / "names.cab").string());
    const std::string xml = cab.GetXML();
    EXPECT_NE(xml.find("<FULLNAME>R&D <draft>.txt</FULLNAME>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<FULLNAME>R&D.txt</FULLNAME>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<DATE>2026-03-1"), std::string::npos) << xml;
    // The platform allows "&" in the name of a file, and "<" not.
    EXPECT_EQ(OutcomeOf([&] { cab.Extract(place.Out()); }).number, kInvalidName);
    EXPECT_EQ(Tree(place.Out()), (std::map<std::string, std::string>{{"R&D.txt", "y"}}));
}

TEST(CabFileNames, LongNameFailsItsFile) {
    const Workplace place;
    CabFile cab = Cab(place.Put("a.cab", CabOf(std::string(250, 'n'), "x")));
    EXPECT_EQ(OutcomeOf([&] { cab.Extract(place.Out()); }).text, "The file name is too long.");
    EXPECT_TRUE(Tree(place.Out()).empty());
}

}  // namespace
}  // namespace swiftpatch::real_system
