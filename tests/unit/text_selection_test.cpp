#include "runtime/text_selection.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

class Selection : public testing::Test {
protected:
    Selection() { lines.Set("alpha\r\nbe\r\n\r\ngamma"); }

    std::size_t Moved(CaretStep step, std::size_t from) {
        selection.MoveTo(from, false);
        selection.Move(step, 2, false);
        return selection.Caret();
    }

    TextLines lines;
    TextSelection selection{lines};
};

TEST_F(Selection, IsEmptyAtTheStart) {
    EXPECT_EQ(selection.Caret(), 0U);
    EXPECT_EQ(selection.Text(), "");
}

TEST_F(Selection, MovesByCharactersAcrossLineEnds) {
    EXPECT_EQ(Moved(CaretStep::kRight, 0), 1U);
    EXPECT_EQ(Moved(CaretStep::kRight, 5), 7U);
    EXPECT_EQ(Moved(CaretStep::kLeft, 7), 5U);
    EXPECT_EQ(Moved(CaretStep::kLeft, 8), 7U);
}

TEST_F(Selection, StaysInTheText) {
    EXPECT_EQ(Moved(CaretStep::kLeft, 0), 0U);
    EXPECT_EQ(Moved(CaretStep::kUp, 0), 0U);
    EXPECT_EQ(Moved(CaretStep::kRight, 18), 18U);
    EXPECT_EQ(Moved(CaretStep::kDown, 18), 18U);
    selection.Select(500, 900);
    EXPECT_EQ(selection.First(), 18U);
    EXPECT_EQ(selection.Behind(), 18U);
}

TEST_F(Selection, MovesByLinesAndPages) {
    EXPECT_EQ(Moved(CaretStep::kDown, 1), 8U);
    EXPECT_EQ(Moved(CaretStep::kUp, 8), 1U);
    EXPECT_EQ(Moved(CaretStep::kPageDown, 1), 11U);
    EXPECT_EQ(Moved(CaretStep::kPageUp, 14), 8U);
}

TEST_F(Selection, ComesBackToItsColumnAfterShorterLines) {
    selection.MoveTo(4, false);
    for (int i = 0; i < 3; ++i) {
        selection.Move(CaretStep::kDown, 2, false);
    }
    EXPECT_EQ(selection.Caret(), 17U);
    selection.Move(CaretStep::kLeft, 2, false);
    selection.Move(CaretStep::kPageUp, 3, false);
    EXPECT_EQ(selection.Caret(), 3U);
}

TEST_F(Selection, MovesToTheEndsOfLineAndText) {
    EXPECT_EQ(Moved(CaretStep::kLineStart, 3), 0U);
    EXPECT_EQ(Moved(CaretStep::kLineEnd, 3), 5U);
    EXPECT_EQ(Moved(CaretStep::kTextStart, 9), 0U);
    EXPECT_EQ(Moved(CaretStep::kTextEnd, 9), 18U);
}

TEST_F(Selection, GrowsInBothDirections) {
    selection.MoveTo(7, false);
    selection.Move(CaretStep::kLineEnd, 2, true);
    EXPECT_EQ(selection.Text(), "be");
    selection.Move(CaretStep::kTextStart, 2, true);
    EXPECT_EQ(selection.Text(), "alpha\r\n");
    EXPECT_EQ(selection.First(), 0U);
    EXPECT_EQ(selection.Behind(), 7U);
    EXPECT_EQ(selection.Caret(), 0U);
}

TEST_F(Selection, EndsWithAnUnextendedMove) {
    selection.Select(0, 4);
    selection.Move(CaretStep::kRight, 2, false);
    EXPECT_EQ(selection.Text(), "");
    EXPECT_EQ(selection.Caret(), 5U);
}

}  // namespace
}  // namespace swiftpatch
