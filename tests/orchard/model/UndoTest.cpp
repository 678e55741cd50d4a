#include "orchard/model/Undo.h"

#include <gtest/gtest.h>

namespace {

class Undo : public testing::Test {
  protected:
    Undo() { recorder.clear(); }
    orchard::UndoRecorder &recorder = orchard::UndoRecorder::instance();
};

TEST_F(Undo, BracketsNestAndMakeOneStep) {
    Undoer::instance()->startTransaction(nullptr, 1, 0, 0);
    Undoer::instance()->startTransaction(nullptr, 7, 0, 0);
    recorder.noteChange();
    Undoer::endTransaction();
    EXPECT_EQ(recorder.steps(), 0U);
    Undoer::endTransaction();
    ASSERT_EQ(recorder.brackets().size(), 2U);
    EXPECT_EQ(recorder.brackets()[1].depth, 1);
    EXPECT_EQ(recorder.brackets()[1].flag, 7);
    EXPECT_EQ(recorder.brackets()[0].changes, 1U);
    EXPECT_FALSE(recorder.brackets()[0].open);
    EXPECT_EQ(recorder.steps(), 1U);
}

TEST_F(Undo, AStepThatDoesNothingMakesNoEntry) {
    {
        const UnUndoableTransaction guard(1);
        Undoer::endTransaction(); // no bracket of this kind is open: ignored
        EXPECT_EQ(recorder.depth(), 1);
    }
    EXPECT_EQ(recorder.depth(), 0);
    EXPECT_EQ(recorder.steps(), 0U);
}

TEST_F(Undo, BracketsOfTwoSortsMayCross) {
    Undoer::instance()->startTransaction(nullptr, 1, 0, 0);
    {
        const UnUndoableTransaction guard(2);
        Undoer::endTransaction();
        EXPECT_EQ(recorder.depth(), 1);
        EXPECT_EQ(recorder.steps(), 1U);
        EXPECT_FALSE(recorder.brackets()[0].open);
        EXPECT_TRUE(recorder.brackets()[1].open);
    }
    EXPECT_EQ(recorder.depth(), 0);
    EXPECT_EQ(recorder.steps(), 1U);
}

TEST_F(Undo, AnEndThatNobodyOpenedIsPassedOver) {
    Undoer::endTransaction();
    EXPECT_EQ(recorder.depth(), 0);
    EXPECT_EQ(recorder.steps(), 0U);
}

} // namespace
