#include "CM/CMSupport/core/Unquotable.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TEST(Unquotable, NamesWhatCannotBeQuoted) {
    EXPECT_EQ(paths::unquotableIn("/w/a$b.ocl"), "the character $");
    EXPECT_EQ(paths::unquotableIn("a\x1b[2J"), "a control character");
    EXPECT_THAT(paths::unquotableIn("C:\\w\\"), HasSubstr("backslash"));
    EXPECT_THAT(paths::unquotableIn("/w/(x ? y).ocl"), HasSubstr("a condition"));
    EXPECT_THAT(paths::unquotableIn("/w/a.ocl"), IsEmpty());
}

TEST(Unquotable, APathIsShownWithoutItsControlCharacters) {
    EXPECT_EQ(paths::shownPath("a\n\x1b[31mü$b"), "a??[31mü$b");
}

} // namespace
