#include <gtest/gtest.h>

#include "components/cab_outcome.h"
#include "components/cab_writer.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr std::uint16_t kFromPrevious = 0xFFFD;
constexpr std::uint16_t kGoesOn = 0xFFFE;
constexpr std::size_t kFirstPart = 400;

/// Two cabinets: one file in the first, one that begins there and ends in the second, one there.
struct Pair {
    std::string whole = "a file of the first cabinet";
    std::string spanned = std::string(600, 's') + std::string(400, 't');
    std::string last = "a file of the second cabinet";

    std::string First() const {
        CabImage image;
        AddFile(image, "whole.txt", whole);
        image.entries.push_back(SpannedEntry(kGoesOn));
        image.blocks.push_back({spanned.substr(0, kFirstPart), 0});
        image.next = "second.cab";
        return image.Bytes();
    }

    std::string Second() const {
        CabImage image;
        image.entries.push_back(SpannedEntry(kFromPrevious));
        const auto size = static_cast<std::uint32_t>(last.size());
        image.entries.push_back({"last.txt", size, SpannedEnd()});
        image.blocks.push_back(
            {spanned.substr(kFirstPart), static_cast<std::uint16_t>(spanned.size())});
        image.blocks.push_back({last, static_cast<std::uint16_t>(size)});
        image.previous = "first.cab";
        image.number = 1;
        return image.Bytes();
    }

private:
    CabEntry SpannedEntry(std::uint16_t folder) const {
        return {"spanned.txt", static_cast<std::uint32_t>(spanned.size()),
                static_cast<std::uint32_t>(whole.size()), folder};
    }
    std::uint32_t SpannedEnd() const {
        return static_cast<std::uint32_t>(whole.size() + spanned.size());
    }
};

TEST(CabFileSpanning, FileThatGoesOnInTheNextCabinetIsWhole) {
    const Workplace place;
    const Pair pair;
    CabFile cab = Cab(place.Put("first.cab", pair.First()));
    place.Put("second.cab", pair.Second());
    const Outcome outcome = OutcomeOf([&] { cab.Extract(place.Out()); });
    EXPECT_EQ(outcome.number, 0) << outcome.text;
    EXPECT_EQ(ReadFile(place.Out() + "\\whole.txt"), pair.whole);
    EXPECT_EQ(ReadFile(place.Out() + "\\spanned.txt"), pair.spanned);
}

TEST(CabFileSpanning, MissingNextCabinetEndsWithAnError) {
    const Workplace place;
    CabFile cab = Cab(place.Put("first.cab", Pair().First()));
    EXPECT_NE(OutcomeOf([&] { cab.Extract(place.Out()); }).number, 0);
    EXPECT_EQ(ReadFile(place.Out() + "\\whole.txt"), Pair().whole);
}

TEST(CabFileSpanning, CountingNeedsNoNextCabinet) {
    const Workplace place;
    CabFile cab = Cab(place.Put("first.cab", Pair().First()));
    const Outcome outcome = OutcomeOf([&] { EXPECT_EQ(cab.FileCount(), 2); });
    EXPECT_EQ(outcome.number, 0) << outcome.text;
}

TEST(CabFileSpanning, NextCabinetThatIsNoneEndsWithAnError) {
    const Workplace place;
    CabFile cab = Cab(place.Put("first.cab", Pair().First()));
    for (const std::string& bytes : {std::string(), std::string("no cabinet"), Pair().First(),
                                     Pair().Second().substr(0, 60)}) {
        place.Put("second.cab", bytes);
        EXPECT_NE(OutcomeOf([&] { cab.Extract(place.Out()); }).number, 0)
            << testing::PrintToString(bytes);
        EXPECT_NE(ReadFile(place.Out() + "\\spanned.txt"), Pair().spanned);
    }
}

TEST(CabFileSpanning, SecondCabinetAloneEnds) {
    const Workplace place;
    CabFile cab = Cab(place.Put("second.cab", Pair().Second()));
    OutcomeOf([&] { cab.FileCount(); });
    OutcomeOf([&] { cab.Extract(place.Out()); });
}

TEST(CabFileSpanning, CabinetThatNamesItselfAsTheNextEnds) {
    const Workplace place;
    CabImage image;
    AddFile(image, "whole.txt", "x");
    image.entries.push_back({"spanned.txt", 1000, 1, kGoesOn});
    image.blocks.push_back({std::string(kFirstPart, 's'), 0});
    image.next = "first.cab";
    CabFile cab = Cab(place.Put("first.cab", image.Bytes()));
    EXPECT_NE(OutcomeOf([&] { cab.Extract(place.Out()); }).number, 0);
}

}  // namespace
}  // namespace swiftpatch::real_system
