#include <gtest/gtest.h>

#include "components/cab_outcome.h"
#include "components/cab_writer.h"
#include "runtime/clock.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

/// A cabinet that was made when the tests were built.
CabFile Made(const std::string& name) {
    return Cab((TestFolders().cabinets / (name + ".cab")).string());
}

std::map<std::string, std::string> Originals(const std::string& name) {
    return Tree(TestFolders().cabinets / name);
}

class RealCabinet : public testing::TestWithParam<std::string> {};

TEST_P(RealCabinet, ExtractedBytesEqualTheOriginals) {
    const Workplace place;
    CabFile cab = Made(GetParam());
    std::vector<std::string> done;
    cab.AfterExtract = [&](const std::string& file) { done.push_back(file); };
    cab.Extract(place.Out());
    const auto originals = Originals(GetParam());
    ASSERT_FALSE(originals.empty());
    EXPECT_TRUE(Tree(place.Out()) == originals);
    EXPECT_EQ(done.size(), originals.size());
    EXPECT_TRUE(place.Beside().empty());
}

TEST_P(RealCabinet, CountInfoAndXmlAgreeWithTheOriginals) {
    CabFile cab = Made(GetParam());
    const auto originals = Originals(GetParam());
    EXPECT_EQ(static_cast<std::size_t>(cab.FileCount()), originals.size());
    const std::string xml = cab.GetXML();
    for (const CabFileInfo& info : cab.GetInfo()) {
        const std::string path = info.path.empty() ? info.name : info.path + "\\" + info.name;
        const auto original = originals.find(std::filesystem::path(path).make_preferred().string());
        ASSERT_NE(original, originals.end()) << path;
        EXPECT_EQ(info.size, original->second.size());
        EXPECT_NE(xml.find("<NAME>" + info.name + "</NAME>"), std::string::npos);
    }
}

INSTANTIATE_TEST_SUITE_P(All, RealCabinet,
                         testing::Values("one", "thousand", "folders", "stored", "compressed"),
                         [](const auto& test) { return test.param; });

TEST(CabFileOnFiles, CabinetWithoutFiles) {
    const Workplace place;
    CabFile cab = Cab(place.Put("empty.cab", CabImage().Bytes()));
    EXPECT_EQ(OutcomeOf([&] { EXPECT_EQ(cab.FileCount(), 0); }).number, 0);
    EXPECT_TRUE(cab.GetInfo().empty());
    EXPECT_NE(cab.GetXML().find("<FILES></FILES>"), std::string::npos);
    cab.Extract(place.Out());
    EXPECT_TRUE(Tree(place.Out()).empty());
}

TEST(CabFileOnFiles, OneFileIsExtractedByItsBareName) {
    const Workplace place;
    Made("folders").Extract(place.Out(), "MIDDLE.TXT");
    const auto tree = Tree(place.Out());
    ASSERT_EQ(tree.size(), 1U);
    EXPECT_EQ(tree.begin()->first, "a\\middle.txt");
}

TEST(CabFileOnFiles, CancelledFileIsNotWritten) {
    const Workplace place;
    CabFile cab = Made("stored");
    cab.BeforeExtract = [](const std::string& name, std::uint32_t, DateTime, const std::string&,
                           bool& cancel) { cancel = name == "large.txt"; };
    cab.Extract(place.Out());
    EXPECT_EQ(Tree(place.Out()).size(), 2U);
    EXPECT_FALSE(std::filesystem::exists(place.Out() + "\\large.txt"));
}

TEST(CabFileOnFiles, MissingFoldersOfTheOutputAreMade) {
    const Workplace place;
    Made("one").Extract(place.Out() + "\\new\\deeper\\");
    EXPECT_TRUE(std::filesystem::exists(place.Out() + "\\new\\deeper\\numbers.txt"));
}

TEST(CabFileOnFiles, ExistingFileIsReplaced) {
    const Workplace place;
    place.Put("out\\numbers.txt", std::string(100'000, 'o'));
    Made("one").Extract(place.Out());
    EXPECT_TRUE(Tree(place.Out()) == Originals("one"));
}

TEST(CabFileOnFiles, FileThatIsHeldRaisesAndStays) {
    const Workplace place;
    const std::string target = place.Put("out\\numbers.txt", "old");
    CabFile cab = Made("one");
    int after = 0;
    cab.AfterExtract = [&](const std::string&) { ++after; };
    {
        const HeldFile held(target);
        EXPECT_NE(OutcomeOf([&] { cab.Extract(place.Out()); }).number, 0);
    }
    EXPECT_EQ(ReadFile(target), "old");
    EXPECT_EQ(after, 0);
}

TEST(CabFileOnFiles, OutputPathThatIsAFileRaises) {
    const Workplace place;
    const std::string file = place.Put("file", "x");
    EXPECT_NE(OutcomeOf([&] { Made("one").Extract(file); }).number, 0);
    EXPECT_EQ(ReadFile(file), "x");
}

TEST(CabFileOnFiles, ListenersErrorComesThroughThePlatformsFrames) {
    const Workplace place;
    CabFile cab = Made("thousand");
    int before = 0;
    cab.BeforeExtract = [&](const std::string&, std::uint32_t, DateTime, const std::string&,
                            bool&) {
        if (++before == 3) {
            throw RuntimeError(61);
        }
    };
    try {
        cab.Extract(place.Out());
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 61);
    }
    EXPECT_EQ(before, 3);
    EXPECT_EQ(Tree(place.Out()).size(), 2U);
    EXPECT_EQ(cab.FileCount(), 1000);
}

TEST(CabFileOnFiles, NestedCallRaisesAndTheOuterWalkGoesOn) {
    const Workplace place;
    CabFile cab = Made("thousand");
    int refused = 0;
    cab.AfterExtract = [&](const std::string&) {
        try {
            cab.FileCount();
        } catch (const RuntimeError&) {
            ++refused;
        }
    };
    cab.Extract(place.Out());
    EXPECT_EQ(refused, 1000);
    EXPECT_EQ(Tree(place.Out()).size(), 1000U);
}

TEST(CabFileOnFiles, TimesAreMovedFromUniversalToLocalTime) {
    const Workplace place;
    CabFile cab = Cab(place.Put("a.cab", CabOf("x", "1")));
    const std::int64_t offset = MinutesBetween(UtcNow(), Now());
    EXPECT_NE(offset, 0) << "in a zone without an offset nothing is tested: set TZ";
    const std::vector<CabFileInfo> infos = cab.GetInfo();
    ASSERT_EQ(infos.size(), 1U);
    EXPECT_EQ(infos[0].dateTime, AddMinutes(MakeDateTime({2026, 3, 10, 12, 16, 14}), offset));
}

}  // namespace
}  // namespace swiftpatch::real_system
