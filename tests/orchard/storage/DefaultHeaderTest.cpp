#include "orchard/storage/DefaultHeader.h"
#include "tests/orchard/storage/Workbench.h"

#include "CM/host/IProperty.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class DefaultHeader : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    /// The header of a new file when the property names this file.
    std::string headerFrom(const std::string &file) {
        const IProperty *const tool = project->findProperty("ConfigurationManagement", "CMGeneral", "CMTool", 0);
        IProperty property(tool);
        property.setName("HeaderFile");
        property.setValue(file);
        project->storeProperty("ConfigurationManagement",
                               tool == nullptr ? CString("CMGeneral") : tool->getValue(), &property);
        return orchard::defaultHeaderOf(*orchard::Element::of(project));
    }
};

} // namespace

TEST_F(DefaultHeader, IsTheTextOfTheFileWithoutItsLastLineEnds) {
    write(path("header"), "$Id$\n\n");
    EXPECT_EQ(headerFrom(path("header")), "$Id$");
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(DefaultHeader, AFileThatIsMissingIsToldOnce) {
    EXPECT_EQ(headerFrom(path("none")), "");
    EXPECT_EQ(headerFrom(path("none")), "");
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(path("none")), HasSubstr("can't be read"))));
}

TEST_F(DefaultHeader, AFileThatWouldEndTheCommentIsRefusedAndTold) {
    write(path("header"), "a --> b\n");
    EXPECT_EQ(headerFrom(path("header")), "");
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(path("header")), HasSubstr("-->"))));
}
