#include "components/Callback.h"
#include "unit/CabFile_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class CabFileWalk : public CabinetTest {
protected:
    /// The error of each method, in the order FileCount, Extract, GetInfo, GetXML.
    std::vector<RuntimeError> ErrorsOfAll() {
        return {ErrorRaisedBy([&] { cab.FileCount(); }),
                ErrorRaisedBy([&] { cab.Extract("C:\\Out"); }),
                ErrorRaisedBy([&] { cab.GetInfo(); }), ErrorRaisedBy([&] { cab.GetXML(); })};
    }
};

TEST_F(CabFileWalk, WithoutCabNameEveryMethodRaisesBeforeThePlatformIsAsked) {
    cab.CabName = "";
    for (const RuntimeError& error : ErrorsOfAll()) {
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800407A4U));
        EXPECT_EQ(error.Description(),
                  "You must set the CabName property before taking any action on the CabFile "
                  "object.");
        EXPECT_EQ(error.Source(), "CabFile");
    }
    EXPECT_THAT(world.trace.Lines(), ElementsAre());
}

TEST_F(CabFileWalk, FailedWalkRaisesTheLastErrorWithItsTextAndTheMethodsSource) {
    cabinet.failure = 23;
    const std::vector<RuntimeError> errors = ErrorsOfAll();
    for (const RuntimeError& error : errors) {
        EXPECT_EQ(error.Number(), 23);
        EXPECT_EQ(error.Description(), "Data error (cyclic redundancy check).");
    }
    EXPECT_EQ(errors[0].Source(), "CabFile");
    EXPECT_EQ(errors[1].Source(), "CabFile");
    EXPECT_EQ(errors[2].Source(), "CabFile.GetInfo");
    EXPECT_EQ(errors[3].Source(), "CabFile.GetXML");
}

TEST_F(CabFileWalk, MissingCabinetRaisesThePlatformsError) {
    cab.CabName = "C:\\none.cab";
    const RuntimeError error = ErrorRaisedBy([&] { cab.FileCount(); });
    EXPECT_EQ(error.Number(), 2);
    EXPECT_EQ(error.Description(), "The system cannot find the file specified.");
}

TEST_F(CabFileWalk, LastErrorOutsideTheTableIsUnknown) {
    cabinet.failure = 0x80070000U;
    const RuntimeError error = ErrorRaisedBy([&] { cab.GetXML(); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80070000U));
    EXPECT_EQ(error.Description(), "Unknown error.");
}

TEST_F(CabFileWalk, FileCountSkipsEveryFileAndStartsAnewEachTime) {
    Add("one");
    Add("a\\two");
    EXPECT_EQ(cab.FileCount(), 2);
    EXPECT_EQ(cab.FileCount(), 2);
    EXPECT_THAT(Answers(17), ElementsAre("2", "2", "2", "2"));
    EXPECT_THAT(world.disk.Names(), ElementsAre());
}

TEST_F(CabFileWalk, FileCountOfAnEmptyCabinetIsZero) { EXPECT_EQ(cab.FileCount(), 0); }

TEST_F(CabFileWalk, NeedNewCabinetAndUnknownNotificationsAreAnsweredWithZero) {
    for (const std::uint32_t number : {16U, 18U, 20U, 0U, 0xFFFFFFFFU}) {
        cabinet.Add(headless::CabinetNotification{number});
    }
    EXPECT_EQ(cab.FileCount(), 0);
    EXPECT_THAT(world.trace.StartingWith("Cabinet "),
                ElementsAre("Cabinet 16 -> 0", "Cabinet 18 -> 0", "Cabinet 20 -> 0",
                            "Cabinet 0 -> 0", "Cabinet 4294967295 -> 0"));
}

TEST_F(CabFileWalk, UnknownModeAnswersAFileWithZero) {
    FileInCabinetInfoA info{};
    info.nameInCabinet = "x";
    const CabRegistration registration(cab, CabMode{4});
    EXPECT_EQ(CabCallBack(nullptr, 17, reinterpret_cast<std::uintptr_t>(&info), 0), 0U);
}

TEST_F(CabFileWalk, NotificationWithoutARegisteredObjectIsAnsweredWithZero) {
    EXPECT_EQ(CabCallBack(nullptr, 17, 0, 0), 0U);
    EXPECT_EQ(CabCallBack(nullptr, 19, 0, 0), 0U);
}

TEST_F(CabFileWalk, NestedCallRaisesAndTheOuterWalkGoesOn) {
    Add("one", "1");
    Add("two", "2");
    std::vector<std::int32_t> numbers;
    std::vector<std::string> texts;
    CabFile other;
    other.CabName = "C:\\a.cab";
    cab.BeforeExtract = BeforeAny([&] {
        for (const RuntimeError& error :
             {ErrorRaisedBy([&] { cab.FileCount(); }), ErrorRaisedBy([&] { other.GetXML(); })}) {
            numbers.push_back(error.Number());
            texts.push_back(error.Source() + ": " + error.Description());
        }
    });
    cab.Extract("C:\\Out");
    EXPECT_THAT(numbers, testing::Each(static_cast<std::int32_t>(0x800407A5U)));
    EXPECT_THAT(texts, testing::Each("CabFile: Unknown error."));
    EXPECT_EQ(numbers.size(), 4U);
    EXPECT_EQ(BytesOf("C:\\Out\\one"), "1");
    EXPECT_EQ(BytesOf("C:\\Out\\two"), "2");
    EXPECT_EQ(world.trace.StartingWith("SetupIterateCabinet").size(), 1U);
}

TEST_F(CabFileWalk, NestedCallThatNobodyTrapsEndsTheOuterWalk) {
    Add("one");
    Add("two");
    cab.BeforeExtract = BeforeAny([&] { cab.GetInfo(); });
    EXPECT_EQ(ErrorRaisedBy([&] { cab.Extract("C:\\Out"); }).Number(),
              static_cast<std::int32_t>(0x800407A5U));
    EXPECT_THAT(Answers(17), ElementsAre("0"));
    EXPECT_EQ(cab.FileCount(), 2);
}

TEST_F(CabFileWalk, ErrorOfAListenerIsPassedOnAsItIs) {
    Add("one", "1");
    Add("two", "2");
    cab.AfterExtract = [](const std::string&) { throw RuntimeError(61); };
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract("C:\\Out"); });
    EXPECT_EQ(error.Number(), 61);
    EXPECT_EQ(error.Source(), "");
    EXPECT_THAT(Answers(19), ElementsAre("1223"));
    EXPECT_EQ(BytesOf("C:\\Out\\two"), "missing");
}

TEST_F(CabFileWalk, EndOfTheRunPassesThroughTheWalk) {
    Add("one");
    cab.FileFound = [](const std::string&, DateTime, std::uint32_t, const std::string&) {
        throw EndProgram();
    };
    EXPECT_THROW(cab.GetInfo(), EndProgram);
    EXPECT_EQ(cab.FileCount(), 1);
}

TEST_F(CabFileWalk, AfterAnErrorNoFurtherNotificationReachesAListener) {
    CabRegistration registration(cab, CabMode::kDescribe);
    int calls = 0;
    cab.FileFound = [&](const std::string&, DateTime, std::uint32_t, const std::string&) {
        ++calls;
        throw RuntimeError(5);
    };
    FileInCabinetInfoA info{};
    const auto record = reinterpret_cast<std::uintptr_t>(&info);
    EXPECT_EQ(CabCallBack(nullptr, 17, record, 0), 0U);
    EXPECT_EQ(CabCallBack(nullptr, 17, record, 0), 0U);
    EXPECT_EQ(calls, 1);
}

TEST_F(CabFileWalk, ListenerMaySetCabNameForTheNextWalk) {
    Add("one");
    cab.FileFound = [&](const std::string&, DateTime, std::uint32_t, const std::string&) {
        cab.CabName = "C:\\none.cab";
        cab.FileFound = {};
    };
    EXPECT_EQ(cab.GetInfo().size(), 1U);
    EXPECT_EQ(ErrorRaisedBy([&] { cab.GetInfo(); }).Number(), 2);
}

}  // namespace
}  // namespace swiftpatch
