#include "orchard/storage/DefaultHeader.h"
#include "orchard/storage/LibraryFacade.h"
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

TEST_F(DefaultHeader, IsWrittenIntoANewFile) {
    write(path("header"), "$Id$\n");
    headerFrom(path("header"));
    EXPECT_EQ(unit("Valve")->saveUnitToFile(path("new.ocl"), orySaveAlways), 1);
    EXPECT_THAT(read(path("new.ocl")), HasSubstr("<!--\n$Id$\n-->\n<class "));
    EXPECT_THAT(read(unitFile("Valve.ocl")), testing::Not(HasSubstr("$Id$")));
}

TEST_F(DefaultHeader, OfAllToolsIsTakenWhereTheToolHasNone) {
    write(path("header"), "$Id$\n");
    IProperty general(static_cast<const IProperty *>(nullptr));
    general.setName("HeaderFile");
    general.setValue(path("header"));
    project->storeProperty("ConfigurationManagement", "CMGeneral", &general);
    EXPECT_EQ(orchard::defaultHeaderOf(*orchard::Element::of(project)), "$Id$");
    write(path("tools"), "$Revision$\n");
    EXPECT_EQ(headerFrom(path("tools")), "$Revision$");
}

TEST_F(DefaultHeader, OfAProjectThatWorksThroughAProviderIsThatOfAllProviders) {
    const auto set = [&](const char *metaclass, const char *key, const std::string &value) {
        IProperty property(static_cast<const IProperty *>(nullptr));
        property.setName(key);
        property.setValue(value);
        project->storeProperty("ConfigurationManagement", metaclass, &property);
    };
    write(path("tools"), "$Revision$\n");
    write(path("providers"), "$Id$\n");
    set("General", "UseSCCtool", "yes");
    EXPECT_EQ(headerFrom(path("tools")), "");
    set("SCC", "HeaderFile", path("providers"));
    EXPECT_EQ(orchard::defaultHeaderOf(*orchard::Element::of(project)), "$Id$");
}

TEST_F(DefaultHeader, MayStandInTheShareDirectory) {
    write(path("share/header"), "$Id$\n");
    ::setenv("ORCHARD_SHARE", path("share").c_str(), 1);
    EXPECT_EQ(headerFrom("$OQROOT/header"), "$Id$");
    ::unsetenv("ORCHARD_SHARE");
}

TEST_F(DefaultHeader, AControlCharacterOrWhatIsNoTextIsRefusedAndTold) {
    write(path("bell"), "$Id$\a");
    EXPECT_EQ(headerFrom(path("bell")), "");
    write(path("latin"), "Geh\xe4use");
    EXPECT_EQ(headerFrom(path("latin")), "");
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(path("bell")), HasSubstr("control character")),
                                      AllOf(HasSubstr(path("latin")), HasSubstr("not UTF-8"))));
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

namespace {

/// The library, with its own header.
class Library : public IBaseCMFacade {
  public:
    explicit Library(CString header) : header_(std::move(header)) { orchard::setCMFacade(this); }
    ~Library() override { orchard::setCMFacade(nullptr); }
    CString getTheDefaultHeader() override { return header_; }
    void RefreshCMStatus() override {}

  private:
    CString header_;
};

} // namespace

TEST_F(DefaultHeader, IsWhatTheLibraryHasForTheActiveProject) {
    write(path("header"), "$Id$\n");
    const Library library("$Revision$\n\n");
    EXPECT_EQ(headerFrom(path("header")), "$Revision$");
}

TEST_F(DefaultHeader, OfAProjectThatIsNotActiveIsNotTheLibrarysOne) {
    write(path("header"), "$Id$\n");
    const Library library("$Revision$\n");
    IProject *const first = project;
    ASSERT_TRUE(orchard::createSampleProject(path("other"), ""));
    ASSERT_TRUE(orchard::openProject(path("other.orp")));
    ASSERT_NE(CurrentWorkspace::GetActiveProject(), first);
    EXPECT_EQ(headerFrom(path("header")), "$Id$");
}

TEST_F(DefaultHeader, OfTheLibraryIsHeldToTheSameRules) {
    write(path("ended"), "");
    {
        const Library library("a --> b");
        EXPECT_EQ(headerFrom(path("ended")), "");
    }
    {
        const Library library(std::string((1U << 20U) + 1, 'x'));
        EXPECT_EQ(headerFrom(path("long")), "");
    }
    const Library library("");
    EXPECT_EQ(headerFrom(path("empty")), "");
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(path("ended")), HasSubstr("-->")),
                                      AllOf(HasSubstr(path("long")), HasSubstr("longer than a megabyte")),
                                      AllOf(HasSubstr(path("empty")), HasSubstr("can't be read"))));
}

TEST_F(DefaultHeader, AFileThatIsMeantToBeEmptyIsNoTrouble) {
    write(path("blank"), "");
    EXPECT_EQ(headerFrom(path("blank")), "");
    const Library library("");
    EXPECT_EQ(headerFrom(path("blank")), "");
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(DefaultHeader, AFileInWhichTheLibraryFindsNothingIsTold) {
    write(path("cut"), "\xff$Id$\n");
    const Library library("");
    EXPECT_EQ(headerFrom(path("cut")), "");
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(path("cut")), HasSubstr("is empty or can't be read"))));
}
