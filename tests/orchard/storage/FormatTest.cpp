#include "orchard/storage/UnitHeader.h"
#include "tests/orchard/storage/Workbench.h"

namespace {

TEST(UnitHeader, IsTheCommentInFrontOfTheRoot) {
    EXPECT_EQ(orchard::findHeader("<?xml version=\"1.0\"?>\n<!--\n$Id$\n-->\n<class/>").text, "$Id$");
    EXPECT_EQ(orchard::findHeader("<?xml?>\r\n<!--\r\n$Id$\r\nb\r\n-->\r\n<class/>").text, "$Id$\r\nb");
    EXPECT_EQ(orchard::findHeader("<!--$Id: a--b $-->\n<class/>").text, "$Id: a--b $");
}

TEST(UnitHeader, ATextWithoutOneHasAnEmptyOne) {
    EXPECT_EQ(orchard::findHeader("<class><!-- x --></class>").text, "");
    EXPECT_EQ(orchard::findHeader("<!-- never ends").text, "");
    EXPECT_EQ(orchard::findHeader("").text, "");
    EXPECT_EQ(orchard::findHeader("<?xml").text, "");
}

TEST(UnitHeader, EndsWhereTheContentBegins) {
    const std::string_view text = "<?xml?>\n<!--\n$Id$\n-->\n<class/>";
    EXPECT_EQ(text.substr(orchard::findHeader(text).end), "<class/>");
}

} // namespace
