#include <gtest/gtest.h>

#include "components/cab_outcome.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr std::size_t kCutStep = 64;
constexpr std::size_t kFlips = 200;

/// All methods on one cabinet; each must end, and nothing may be written beside the output folder.
/// Returns how the extraction ended.
Outcome TryAll(const Workplace& place, const std::string& bytes, const std::string& what) {
    SCOPED_TRACE(what);
    CabFile cab = Cab(place.Put("damaged.cab", bytes));
    const auto before = place.Beside();
    OutcomeOf([&] { cab.FileCount(); });
    OutcomeOf([&] { cab.GetInfo(); });
    OutcomeOf([&] { cab.GetXML(); });
    const Outcome outcome = OutcomeOf([&] { cab.Extract(place.Out()); });
    EXPECT_TRUE(place.Beside() == before);
    place.EmptyOut();
    return outcome;
}

class Damage : public testing::TestWithParam<std::string> {
protected:
    std::string Whole() const { return ReadFile(TestFolders().cabinets / (GetParam() + ".cab")); }
    Workplace place;
};

TEST_P(Damage, CabinetCutShortAnywhereRaises) {
    const std::string whole = Whole();
    ASSERT_FALSE(whole.empty());
    for (std::size_t size = 0; size < whole.size(); size += kCutStep) {
        const std::string what = "cut at " + std::to_string(size);
        EXPECT_NE(TryAll(place, whole.substr(0, size), what).number, 0) << what;
    }
}

TEST_P(Damage, CabinetWithAFlippedBitEnds) {
    const std::string whole = Whole();
    ASSERT_FALSE(whole.empty());
    for (std::size_t i = 0; i < kFlips; ++i) {
        std::string bytes = whole;
        // Half of the places lie in the headers, where a flip does most.
        const std::size_t at = i % 2 == 0 ? i / 2 : i * whole.size() / kFlips;
        bytes[at] = static_cast<char>(bytes[at] ^ 1 << i % 8);
        TryAll(place, bytes, "bit " + std::to_string(i % 8) + " of byte " + std::to_string(at));
    }
}

INSTANTIATE_TEST_SUITE_P(All, Damage, testing::Values("one", "folders"),
                         [](const auto& test) { return test.param; });

TEST(CabFileOnOtherThings, TextFileRaises) {
    const Workplace place;
    CabFile cab = Cab(place.Put("text.cab", "This is no cabinet, whatever it is called.\r\n"));
    EXPECT_NE(OutcomeOf([&] { cab.FileCount(); }).number, 0);
    EXPECT_NE(OutcomeOf([&] { cab.Extract(place.Out()); }).number, 0);
    EXPECT_NE(OutcomeOf([&] { cab.GetXML(); }).number, 0);
}

TEST(CabFileOnOtherThings, EmptyFileRaises) {
    const Workplace place;
    CabFile cab = Cab(place.Put("empty.cab", ""));
    EXPECT_NE(OutcomeOf([&] { cab.FileCount(); }).number, 0);
}

TEST(CabFileOnOtherThings, MissingFileRaisesThatItIsMissing) {
    const Workplace place;
    CabFile cab = Cab(place.PathOf("none.cab"));
    EXPECT_EQ(OutcomeOf([&] { cab.FileCount(); }).text,
              "The system cannot find the file specified.");
    EXPECT_EQ(OutcomeOf([&] { cab.GetInfo(); }).text, "The system cannot find the file specified.");
}

TEST(CabFileOnOtherThings, MissingFolderRaises) {
    const Workplace place;
    CabFile cab = Cab(place.PathOf("none\\none.cab"));
    EXPECT_NE(OutcomeOf([&] { cab.FileCount(); }).number, 0);
}

TEST(CabFileOnOtherThings, FolderRaises) {
    const Workplace place;
    CabFile cab = Cab(place.Out());
    EXPECT_NE(OutcomeOf([&] { cab.FileCount(); }).number, 0);
    EXPECT_NE(OutcomeOf([&] { cab.Extract(place.PathOf("other")); }).number, 0);
}

}  // namespace
}  // namespace swiftpatch::real_system
