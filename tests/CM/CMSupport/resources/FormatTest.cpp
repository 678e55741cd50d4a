#include "CM/CMSupport/resources/Format.h"

#include <gmock/gmock.h>

using resources::format;
using testing::HasSubstr;

namespace {

TEST(Format, PutsArgumentsInTheirOrder) { EXPECT_EQ(format("%s is %s.", {"one", "two"}), "one is two."); }

TEST(Format, TakesAnArgumentAsItIs) { EXPECT_EQ(format("<%s|%s>", {"100%s %n %d", "b"}), "<100%s %n %d|b>"); }

TEST(Format, APlaceholderWithoutAnArgumentIsEmptyAndAnArgumentTooManyIsLeftOut) {
    EXPECT_EQ(format("<%s|%s>", {"a"}), "<a|>");
    EXPECT_EQ(format("plain", {"a"}), "plain");
}

TEST(Format, LeavesOtherPercentSignsAlone) { EXPECT_EQ(format("100% %d%s%", {"x"}), "100% %dx%"); }

TEST(Format, FillsATextOfTheTable) {
    EXPECT_THAT(format(resources::Text::loadingFailed, {"/models/Pump.ocl"}), HasSubstr("\"/models/Pump.ocl\""));
}

} // namespace
