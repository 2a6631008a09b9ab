#include "runtime/events.h"

#include "runtime/msgbox.h"
#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

class Events : public ProgramTest {};

TEST_F(Events, UntrappedErrorShowsTheSystemsBoxAndEndsTheRun) {
    world.user.Answer("Run-time error '438'");
    world.Dispatch([] { throw RuntimeError(error_number::kNoSuchMember); });
    EXPECT_EQ(
        world.trace.Lines(),
        (std::vector<std::string>{"MsgBox 16 \"SwiftPatch\" \"Run-time error '438':\\r\\n\\r\\n"
                                  "Object doesn't support this property or method\" -> OK",
                                  "End"}));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Events, UntrappedErrorEndsTheRunInsideAnotherProceduresPumpWithATrap) {
    world.user.Answer("Run-time error '9'");
    world.AtPump(
        1, [] { RaiseEvent([] { throw RuntimeError(error_number::kSubscriptOutOfRange); }); });
    bool trapped = false;
    bool wentOn = false;
    world.Dispatch([&] {
        try {
            DoEvents();
        } catch (const RuntimeError&) {
            trapped = true;
        }
        wentOn = true;
    });
    EXPECT_FALSE(trapped);
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Events, UntrappedErrorOfATimerEndsTheRunInsideAnotherProceduresPump) {
    world.user.Answer("Run-time error '6'");
    Window().tmrDownloadTimeout.Elapsed = [] { throw RuntimeError(error_number::kOverflow); };
    Window().tmrDownloadTimeout.Enabled = true;
    bool trapped = false;
    world.Dispatch([&] {
        try {
            for (int i = 0; i < 2000; ++i) {
                DoEventsResting();
            }
        } catch (const RuntimeError&) {
            trapped = true;
        }
    });
    EXPECT_FALSE(trapped);
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Events, ProcedureWithoutAnErrorShowsNothing) {
    bool ran = false;
    RaiseEvent([&ran] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(Events, EndLeavesTheProcedureAtOnce) {
    bool wentOn = false;
    world.Dispatch([&] {
        End();
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(RunIsOver());
}

TEST_F(Events, EndRunAtNextPumpLetsTheCallerFinishUpToItsNextPump) {
    bool beforePump = false;
    bool afterPump = false;
    world.Dispatch([&] {
        EndRunAtNextPump();
        beforePump = true;
        DoEvents();
        afterPump = true;
    });
    EXPECT_TRUE(beforePump);
    EXPECT_FALSE(afterPump);
}

TEST_F(Events, EveryPumpThrowsOnceTheRunIsOver) {
    world.EndRun();
    EXPECT_THROW(DoEvents(), EndProgram);
    EXPECT_THROW(DoEventsResting(), EndProgram);
    EXPECT_THROW(DoEventsPaced(), EndProgram);
}

TEST_F(Events, NoBoxAppearsOnceTheRunIsOver) {
    world.EndRun();
    EXPECT_THROW(MsgBox("too late"), EndProgram);
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(Events, NoBoxOfAnUntrappedErrorAppearsOnceTheRunIsOver) {
    world.EndRun();
    EXPECT_THROW(RaiseEvent([] { throw RuntimeError(error_number::kOverflow); }), EndProgram);
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(Events, RunThatEndsWhileABoxIsOpenDoesNotGoOnAfterIt) {
    world.user.Answer("question", MsgBoxAnswer::kYes, [] { EndRunAtNextPump(); });
    bool wentOn = false;
    world.Dispatch([&] {
        MsgBox("question", msgbox::kYesNo);
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
}

TEST_F(Events, BoxWithoutATitleCarriesTheApplications) {
    world.user.Answer("text");
    EXPECT_EQ(MsgBox("text"), MsgBoxAnswer::kOk);
    EXPECT_EQ(world.trace.Lines(),
              std::vector<std::string>{"MsgBox 0 \"SwiftPatch\" \"text\" -> OK"});
}

}  // namespace
}  // namespace swiftpatch
