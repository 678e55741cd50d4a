// Tests the state of a unit as text and as an image.
#include "CM/CMSupport/core/CMStatus.h"

#include "CM/CMSupport/resources/Texts.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <ostream>
#include <set>
#include <string>

using resources::Text;

namespace {

constexpr long controlled = 1;
constexpr long checkedOut = 2;
constexpr long outToOther = 4;
constexpr long deleted = 64;
constexpr long outByUser = 4096;

class Status : public CoreFixture {
  protected:
    recording::Class &unit(long state) {
        auto &pump = host.addUnit("Pump");
        pump.cmState = state;
        return pump;
    }
};

TEST_F(Status, OnlyMinusOneIsInvalid) {
    EXPECT_TRUE(CMStatus::getIsInvalid(&unit(-1)));
    for (const long state : {0L, 1L, -2L, -3084L, 0xffffL}) {
        EXPECT_FALSE(CMStatus::getIsInvalid(&unit(state))) << state;
    }
}

// --- Texts.

struct Row {
    long state;
    const Text *checkedOutText; ///< null for the empty text
    const Text *controlledText;
};
void PrintTo(const Row &row, std::ostream *out) { *out << row.state; }

constexpr Text toUser = Text::statusCheckedOut;
constexpr Text toOther = Text::statusCheckedOutByOther;
constexpr Text elsewhere = Text::statusCheckedOutElsewhere;
constexpr Text notOut = Text::statusNotCheckedOut;
constexpr Text isControlled = Text::statusControlled;
constexpr Text notControlled = Text::statusNotControlled;
constexpr Text isDeleted = Text::statusDeleted;

const Row rows[] = {
    {0, nullptr, &notControlled},
    {checkedOut | outToOther | outByUser, nullptr, &notControlled},
    {deleted, nullptr, &notControlled},
    {controlled, &notOut, &isControlled},
    {controlled | 8 | 16 | 32 | 128, &notOut, &isControlled}, // bits that say nothing here
    {controlled | checkedOut, &toUser, &isControlled},
    {controlled | checkedOut | outToOther, &toUser, &isControlled},
    {controlled | checkedOut | outByUser, &toUser, &isControlled},
    {controlled | outToOther, &toOther, &isControlled},
    {controlled | outToOther | outByUser, &toOther, &isControlled},
    {controlled | outByUser, &elsewhere, &isControlled},
    {controlled | deleted, nullptr, &isDeleted},
    {controlled | deleted | checkedOut, nullptr, &isDeleted},
    {-1, nullptr, &isDeleted},    // all bits
    {-3084, nullptr, nullptr},    // the special value; its lowest bit is clear
    {-3083, nullptr, &isDeleted}, // one more is an ordinary value
};

class StatusTexts : public Status, public testing::WithParamInterface<Row> {
  protected:
    static CString expected(const Text *text) { return text == nullptr ? CString() : resources::text(*text); }
};
INSTANTIATE_TEST_SUITE_P(Each, StatusTexts, testing::ValuesIn(rows));

TEST_P(StatusTexts, TellWhoHasTheUnitCheckedOut) {
    EXPECT_EQ(CMStatus::getCheckedOut(&unit(GetParam().state)), expected(GetParam().checkedOutText));
}

TEST_P(StatusTexts, TellWhetherTheUnitIsControlled) {
    EXPECT_EQ(CMStatus::getControlled(&unit(GetParam().state)), expected(GetParam().controlledText));
}

TEST_F(Status, TheTextsAreDifferent) {
    std::set<std::string> texts;
    for (const Text text : {toUser, toOther, elsewhere, notOut, isControlled, notControlled, isDeleted}) {
        texts.insert(resources::text(text));
    }
    EXPECT_EQ(texts.size(), 7U);
}

// --- Images.

struct ImageRow {
    long state;
    int image;
};
void PrintTo(const ImageRow &row, std::ostream *out) { *out << row.state; }

const ImageRow imageRows[] = {
    {0, 1},
    {checkedOut | outToOther | deleted | outByUser, 1},
    {controlled | deleted, 6},
    {controlled | deleted | checkedOut | outToOther | outByUser, 6},
    {controlled | checkedOut, 5},
    {controlled | checkedOut | outToOther | outByUser, 5},
    {controlled | outToOther, 4},
    {controlled | outToOther | outByUser, 4},
    {controlled | outByUser, 0},
    {controlled, 2},
    {-3084, 1},
};

class StatusImages : public Status, public testing::WithParamInterface<ImageRow> {};
INSTANTIATE_TEST_SUITE_P(Each, StatusImages, testing::ValuesIn(imageRows));

TEST_P(StatusImages, GoByTheBitsWhileStatesAreNotOnDisplay) {
    project().showStatus = false;
    EXPECT_EQ(CMStatus::getCMStatusImgIndex(&unit(GetParam().state)), GetParam().image);
}

TEST_P(StatusImages, AreTheFirstOneWhileStatesAreOnDisplay) {
    project().showStatus = true;
    EXPECT_EQ(CMStatus::getCMStatusImgIndex(&unit(GetParam().state)), 0);
}

TEST_F(Status, TheImageOfAnInvalidStateGoesByItsBitsInEitherCase) {
    for (const bool onDisplay : {false, true}) {
        project().showStatus = onDisplay;
        EXPECT_EQ(CMStatus::getCMStatusImgIndex(&unit(-1)), 6);
    }
}

} // namespace
