#include "CM/CMSupport/resources/Format.h"

#include <gmock/gmock.h>

using resources::format;
using resources::Text;
using resources::text;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

TEST(Format, FillsATextOfTheTable) {
    EXPECT_THAT(format(Text::loadingFailed, {"/models/Pump.ocl"}), HasSubstr("\"/models/Pump.ocl\""));
}

TEST(Format, PutsArgumentsInTheirOrder) {
    EXPECT_THAT(format(Text::stubLeftOut, {"Class", "Pump"}), StartsWith("Class 'Pump' "));
}

TEST(Format, TakesAnArgumentAsItIs) {
    EXPECT_THAT(format(Text::stubLeftOut, {"100%s %n %d", "b"}), StartsWith("100%s %n %d 'b' "));
}

TEST(Format, KeepsWhatStandsBehindTheLastPlaceholder) {
    EXPECT_THAT(format(Text::writableFileQuestion, {"a", "b"}), EndsWith("\nFile: b\nCheck it out?"));
}

TEST(Format, APlaceholderWithoutAnArgumentIsEmptyAndAnArgumentTooManyIsLeftOut) {
    EXPECT_THAT(format(Text::stubLeftOut, {"Class"}), StartsWith("Class '' "));
    EXPECT_THAT(format(Text::stubLeftOut, {}), StartsWith(" '' "));
    EXPECT_EQ(format(Text::buttonYes, {"a"}), text(Text::buttonYes));
}

} // namespace
