#include "orchard/model/PatternOrigin.h"

#include "CM/host/SPString.h"
#include "orchard/properties/PropertyTable.h"
#include "tests/orchard/storage/Workbench.h"

using orchard::originOfValue;

namespace {

class PatternOrigin : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    IProperty &setOnValve(std::string_view name, std::string_view value) {
        return element(unit("Valve")).makeProperties().set("CM", "RCS", name, "String", value);
    }
};

TEST_F(PatternOrigin, IsThePropertyWithItsToolAndTheElementThatItIsSetOn) {
    setOnValve("ErrorPattern", "unique(1");
    EXPECT_EQ(originOfValue("unique(1"), "property \"ErrorPattern\" of RCS (set on Class Valve)");
}

TEST_F(PatternOrigin, IsEmptyForAValueThatNoPropertyHas) { EXPECT_EQ(originOfValue("nobody has this"), ""); }

TEST_F(PatternOrigin, FollowsAChangeOfTheValue) {
    setOnValve("k", "before(").setValue("after(");
    EXPECT_EQ(originOfValue("before("), "");
    EXPECT_EQ(originOfValue("after("), "property \"k\" of RCS (set on Class Valve)");
}

TEST_F(PatternOrigin, IsNoCopyAndNoPropertyOfAProjectThatIsClosed) {
    const IProperty copy(&setOnValve("k", "gone("));
    orchard::closeAllProjects();
    EXPECT_EQ(originOfValue("gone("), "");
}

TEST_F(PatternOrigin, IsInTheMessageAboutAPatternThatCanNotBeUsed) {
    setOnValve("ErrorPattern", "^co: (open");
    EXPECT_EQ(SPString("co: open").m("^co: (open", ""), 0);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_THAT(
        messages.front(),
        testing::HasSubstr("The pattern in property \"ErrorPattern\" of RCS (set on Class Valve) can't be"));
}

} // namespace
