// Tests broken, foreign and hostile files: each is reported in one message with its position. The unit becomes a
// stub, and its file stays as it is; where that is impossible, no project is opened.
#include "tests/orchard/storage/Workbench.h"

#include "orchard/storage/UnitSearch.h"

#include <sys/stat.h>

using testing::AllOf;
using testing::HasSubstr;

namespace {

struct Case {
    std::string name;
    std::string from;
    std::string to;
    std::string expected; ///< ":LINE:COLUMN: ..." or a part of the text
};

std::ostream &operator<<(std::ostream &stream, const Case &one) { return stream << one.name; }

class BrokenModel : public Workbench {
  protected:
    BrokenModel() { EXPECT_EQ(orchard::createSampleProject(path("Pump")).error, ""); }

    /// Opens the project; returns the message about the only unit that stays a stub.
    std::string stubWarning(std::string_view words) {
        open();
        EXPECT_TRUE(result.problems.empty()) << result.problems.front().message();
        EXPECT_EQ(warnings.size(), 1U);
        if (project == nullptr || warnings.size() != 1) {
            return {};
        }
        const IUnit *const stub = unit(words);
        EXPECT_TRUE(stub != nullptr && stub->isStub());
        return warnings.front();
    }
};

class BrokenFile : public BrokenModel, public testing::WithParamInterface<Case> {};

TEST_P(BrokenFile, MakesAStubWithAWarningThatNamesThePlace) {
    edit(unitFile("Valve.ocl"), GetParam().from, GetParam().to);
    const std::string broken = read(unitFile("Valve.ocl"));
    EXPECT_THAT(stubWarning("Valve"),
                AllOf(HasSubstr("/Pump_ory/Valve.ocl:"), HasSubstr(GetParam().expected),
                      HasSubstr("; the class 'Valve' is not loaded until the file is fixed, or fetched or "
                                "checked out again")));
    ASSERT_NE(project, nullptr);
    EXPECT_TRUE(orchard::saveProject(project, true).empty());
    EXPECT_EQ(read(unitFile("Valve.ocl")), broken) << "saving leaves it alone";
}

const Case cases[]{
    {"AnElementThatIsNotKnown", "  <name>Valve</name>", "  <nome>Valve</nome>",
     ":3:4: <nome> is not known in <class>"},
    {"AnAttributeThatIsNotKnown", "format=\"1\"", "format=\"1\" color=\"red\"",
     ":2:2: <class> has the attribute \"color\""},
    {"AnAttributeTwice", "format=\"1\"", "format=\"1\" format=\"1\"",
     ":2:2: <class> has the attribute \"format\" twice"},
    {"ANewerFormat", "format=\"1\"", "format=\"2\"", ":2:2: the format of the file is \"2\"; this program reads"},
    {"NoName", "  <name>Valve</name>\n", "", ":2:2: <class> has no name"},
    {"AnEmptyName", "<name>Valve</name>", "<name></name>", ":3:4: <class> has an empty name"},
    {"TwoNames", "<name>Valve</name>", "<name>Valve</name><name>V</name>", ":3:22: <class> has a second name"},
    {"ABrokenIdentifier", "<attribute id=\"", "<attribute id=\"x", ":5:4: <attribute> has the identifier \"x"},
    {"TextBetweenElements", "<name>Valve</name>", "stray<name>Valve</name>", ":2:2: <class> holds text outside"},
    {"AnElementInAText", "<name>Valve</name>", "<name>Val<b/>ve</name>", ":3:4: <name> may hold text only"},
    {"AControlCharacter", "<name>Valve", "<name>Val\x01ve", ":3:12: the control character 0x01"},
    {"AControlCharacterByNumber", "<name>Valve", "<name>Val&#1;ve", ":3:12: \"&\" begins no known reference"},
    {"AByteThatIsNoUtf8", "<name>Valve", "<name>Val\xE4ve", ":3:12: the byte 0xE4 is no UTF-8"},
    {"AnEntity", "<name>Valve", "<name>Val&lol;ve", ":3:12: \"&\" begins no known reference"},
    {"ADocumentType", "<class ", "<!DOCTYPE class [<!ENTITY a \"aaaa\">]>\n<class ", "document type (DTD)"},
    {"AnInstruction", "<class ", "<?run it?>\n<class ", "expected nothing but a header and one root element"},
    {"ACommentInTheBody", "<name>", "<!-- x --><name>", ":2:2: <class> holds a comment"},
    {"ASecondRoot", "</class>", "</class><class/>", "second root element"},
    {"AMergeConflict", "  <name>Valve</name>", "<<<<<<< mine\n  <name>Valve</name>",
     ":3:1: the file holds a merge conflict"},
    {"ATruncatedFile", "</class>\n", "", "the file ends too early"},
    {"AnElementInTheWrongPlace", "</class>",
     "<configuration id=\"00000000-0000-0000-0000-0000000000aa\"><name>a</name></configuration></class>",
     "<configuration> is not known in <class>"},
    {"TwoDescriptions", "<name>Valve</name>", "<name>Valve</name><description>a</description>",
     ":4:4: <class> has a second <description>"},
    {"TwoArchives", "<name>Valve</name>",
     "<name>Valve</name><batch-archive>a</batch-archive><batch-archive>a</batch-archive>",
     ":3:54: <class> has a second <batch-archive>"},
    {"APropertyTwice", "<name>Valve</name>",
     "<name>Valve</name><property subject=\"S\" name=\"n\">1</property><property subject=\"s\" "
     "name=\"N\">2</property>",
     "there is a second <property>"},
    {"TextBehindTheRoot", "</class>", "</class>stray", "there is text outside the root element"},
    {"OneCharacterBehindTheRoot", "</class>\n", "</class>x", "there is text outside the root element"},
    {"TheEndOfAMergeConflict", "</class>\n", "</class>\n=======\n>>>>>>> theirs\n",
     "there is text outside the root element"},
    {"TextBeforeTheRoot", "<class ", "stray<class ", "there is text outside the root element"},
};

INSTANTIATE_TEST_SUITE_P(Unit, BrokenFile, testing::ValuesIn(cases),
                         [](const auto &one) { return one.param.name; });

struct NameCase {
    std::string name;
    std::string file;
    std::string expected;
};

std::ostream &operator<<(std::ostream &stream, const NameCase &one) { return stream << one.name; }

class FileName : public BrokenModel, public testing::WithParamInterface<NameCase> {};

TEST_P(FileName, IsRefused) {
    edit(unitFile("Drives.osb"), "file=\"Valve.ocl\"", GetParam().file);
    EXPECT_THAT(stubWarning("Drives"), AllOf(HasSubstr("/Drives.osb:6:4: the "), HasSubstr(GetParam().expected)));
}

const NameCase names[]{
    {"Quote", "file=\"a&quot;b.ocl\"", "the character \""},
    {"Dollar", "file=\"a$(id).ocl\"", "the character $"},
    {"Backquote", "file=\"a`id`.ocl\"", "the character `"},
    {"Backslash", "file=\"a\\b.ocl\"", "it contains a separator"},
    {"Redirection", "file=\"a>b.ocl\"", "the character >"},
    {"LineEnd", "file=\"a&#10;b.ocl\"", "control character 0x0A"},
    {"Empty", "file=\"\"", "it is not a file name"},
    {"UpTheTree", "file=\"../../etc/passwd\"", "marked as external"},
    {"FromTheRoot", "file=\"/etc/passwd\"", "marked as external"},
    {"DollarInTheDirectoryOfAnExternalFile", "file=\"$(touch pwned)/Valve.ocl\" external=\"yes\"",
     "the character $"},
    {"BackquoteInTheDirectoryOfAReference", "file=\"../`id`/a/Valve.ocl\" reference=\"yes\"", "the character `"},
    {"QuoteBehindABackslash", "file=\"C:\\a&quot;b\\Valve.ocl\" external=\"yes\"", "the character \""},
    {"ExternalDirectoryAsFile", "file=\"../other/\" external=\"yes\"", "it is not a file name"},
    {"DirectoryUpTheTree", "directory=\"../..\" file=\"Valve.ocl\"", "is refused"},
    {"DirectoryFromTheRoot", "directory=\"/etc\" file=\"Valve.ocl\"", "below that of the owner"},
    {"DirectoryWithDollar", "directory=\"a/$b\" file=\"Valve.ocl\"", "the character $"},
};

INSTANTIATE_TEST_SUITE_P(Unit, FileName, testing::ValuesIn(names), [](const auto &one) { return one.param.name; });

TEST_F(BrokenModel, EveryBrokenFileIsNamed) {
    write(unitFile("Valve.ocl"), "");
    write(unitFile("Panel.ocl"), "<class");
    open();
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_THAT(warnings[0] + warnings[1],
                AllOf(HasSubstr("Valve.ocl:1:1: the file is empty"), HasSubstr("Panel.ocl:1:")));
}

TEST_F(BrokenModel, AUnitOfAnotherKindThanItsOwnerSays) {
    std::string text = read(unitFile("Panel.ocl"));
    text = "<subsystem " +
           text.substr(text.find("format="), text.find('>', text.find("format=")) - text.find("format=")) +
           "><name>Panel</name></subsystem>";
    write(unitFile("Panel.ocl"), text);
    EXPECT_THAT(stubWarning("Panel"), HasSubstr("the file holds a subsystem; expected a class"));
}

TEST_F(BrokenModel, AListedUnitWithSomethingInIt) {
    const std::string drives = read(unitFile("Drives.osb"));
    const std::size_t end = drives.find("/>", drives.find("Valve.ocl"));
    write(unitFile("Drives.osb"), drives.substr(0, end) + "><name>Valve</name></unit>" + drives.substr(end + 2));
    EXPECT_THAT(stubWarning("Drives"), HasSubstr("<unit> must be empty"));
}

TEST_F(BrokenModel, ADirectoryOfTheProjectThatACommandLineCanNotQuote) {
    std::filesystem::create_directory(path("a$(id)"));
    std::filesystem::rename(path("Pump.orp"), path("a$(id)/Pump.orp"));
    std::filesystem::rename(path("Pump_ory"), path("a$(id)/Pump_ory"));
    open("a$(id)/Pump.orp");
    EXPECT_THAT(problem(), HasSubstr("the directory of the project is refused: it contains the character $"));
    EXPECT_THAT(orchard::createSampleProject(path("b`id`/Pump")).error, HasSubstr("can't hold a project"));
    EXPECT_FALSE(std::filesystem::exists(path("b`id`")));
}

TEST_F(BrokenModel, ADirectoryOfTheProjectThatATemplateWouldTakeForAConditional) {
    std::filesystem::create_directory(path("a(b?c)"));
    std::filesystem::rename(path("Pump.orp"), path("a(b?c)/Pump.orp"));
    std::filesystem::rename(path("Pump_ory"), path("a(b?c)/Pump_ory"));
    open("a(b?c)/Pump.orp");
    EXPECT_THAT(problem(), HasSubstr("the directory of the project is refused: it contains a \"(\""));
    EXPECT_THAT(orchard::createSampleProject(path("x(y?z)/Pump")).error, HasSubstr("can't hold a project"));
    EXPECT_FALSE(std::filesystem::exists(path("x(y?z)")));
}

TEST_F(BrokenModel, ANameOfTheProjectThatATemplateWouldTakeForAConditional) {
    std::filesystem::create_directory(path("a(b"));
    EXPECT_THAT(orchard::createSampleProject(path("a(b/Why?)")).error, HasSubstr("can't be the name"));
    EXPECT_EQ(orchard::createSampleProject(path("a(b/Why?")).error, "");
    std::filesystem::rename(path("a(b/Why?.orp"), path("a(b/Why?).orp"));
    open("a(b/Why?).orp");
    EXPECT_THAT(problem(), HasSubstr("the path of its units is refused: it contains a \"(\""));
}

TEST_F(BrokenModel, AnIdentifierThatTwoElementsBear) {
    std::string valve = read(unitFile("Valve.ocl"));
    const std::string id = valve.substr(valve.find("<attribute id=\"") + 15, 36);
    std::string pump = read(unitFile("Pump.ocl"));
    pump.replace(pump.find("<attribute id=\"") + 15, 36, id);
    write(unitFile("Pump.ocl"), pump);
    open();
    EXPECT_THAT(problem(),
                AllOf(HasSubstr("/Valve.ocl:5:"), HasSubstr(id), HasSubstr("in " + unitFile("Pump.ocl"))));
}

TEST_F(BrokenModel, AUnitThatItsOwnerKnowsUnderAnotherIdentifier) {
    edit(unitFile("Valve.ocl"), "id=\"", "id=\"00000000-0000-0000-0000-000000000001\" owner=\"");
    std::string text = read(unitFile("Valve.ocl"));
    const std::size_t second = text.find(" owner=\"", text.find(" owner=\"") + 1);
    text.erase(second, text.find('>', second) - second);
    write(unitFile("Valve.ocl"), text);
    EXPECT_THAT(stubWarning("Valve"), HasSubstr("its owner names it as"));
}

TEST_F(BrokenModel, AUnitThatListsItself) {
    const std::string drives = read(unitFile("Drives.osb"));
    const std::string id = drives.substr(drives.find("id=\"") + 4, 36);
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<unit kind=\"subsystem\" id=\"" + id + "\" file=\"Drives.osb\"/></subsystem>");
    open();
    EXPECT_THAT(problem(), HasSubstr("belongs to '"));
}

TEST_F(BrokenModel, AFileThatTwoUnitsName) {
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<embedded id=\"00000000-0000-0000-0000-0000000000aa\" file=\"Pump.ocl\"/></subsystem>");
    open();
    EXPECT_THAT(problem(), HasSubstr("is named by two units"));
}

TEST_F(BrokenModel, ElementsNestedWithoutEnd) {
    std::string text = "<class id=\"00000000-0000-0000-0000-000000000001\"><name>a</name>";
    std::string nested;
    for (int depth = 0; depth < 5000; ++depth) {
        nested += text;
    }
    for (int depth = 0; depth < 5000; ++depth) {
        nested += "</class>";
    }
    edit(unitFile("Valve.ocl"), "</class>", nested + "</class>");
    EXPECT_THAT(stubWarning("Valve"), HasSubstr("nested more than 100 levels deep"));
}

TEST_F(BrokenModel, APipeInTheFilesPlace) {
    std::filesystem::remove(unitFile("Valve.ocl"));
    ASSERT_EQ(::mkfifo(unitFile("Valve.ocl").c_str(), 0600), 0);
    EXPECT_THAT(stubWarning("Valve"), HasSubstr("it is not a regular file"));
}

TEST_F(BrokenModel, ABrokenProjectUnit) {
    edit(unitFile("Pump.ory"), "<name>", "<nome>");
    open();
    EXPECT_THAT(problem(), HasSubstr("/Pump.ory:"));
    EXPECT_TRUE(orchard::openProjects().empty());
}

TEST_F(BrokenModel, AUnitThatWasReadInPartLeavesNothingInTheModel) {
    std::string drives = read(unitFile("Drives.osb"));
    drives.insert(drives.find("</subsystem>"), "<nome/>");
    write(unitFile("Drives.osb"), drives);
    stubWarning("Drives");
    EXPECT_TRUE(unit("Drives")->getName() == "Drives");
    EXPECT_TRUE(element(unit("Drives")).children().empty());
    EXPECT_FALSE(orchard::findUnit(*project, "Valve"));
    EXPECT_EQ(IUnit::getByFile(unitFile("Valve.ocl")), nullptr);
}

TEST_F(BrokenModel, ABrokenUnitIsLoadedOnceItsFileIsMended) {
    const std::string good = read(unitFile("Valve.ocl"));
    write(unitFile("Valve.ocl"), "<cl");
    stubWarning("Valve");
    EXPECT_FALSE(orchard::setUnitLoaded(*unit("Valve"), true).empty()) << "still broken";
    write(unitFile("Valve.ocl"), good);
    EXPECT_TRUE(orchard::setUnitLoaded(*unit("Valve"), true).empty());
    EXPECT_FALSE(unit("Valve")->isStub());
    EXPECT_TRUE(orchard::saveProject(project, true).empty());
    EXPECT_THAT(read(path("Pump.orp")), testing::Not(HasSubstr("\nstub "))) << "no choice of the user's";
}

TEST_F(BrokenModel, AUnitThatComesInWithALoadedOneIsAStubWhereItsFileIsBroken) {
    open();
    EXPECT_TRUE(orchard::setUnitLoaded(*unit("Drives"), false).empty());
    write(unitFile("Valve.ocl"), "<cl");
    EXPECT_TRUE(orchard::setUnitLoaded(*unit("Drives"), true).empty());
    EXPECT_TRUE(unit("Valve")->isStub());
    EXPECT_FALSE(unit("Drives")->isStub());
}

TEST_F(BrokenModel, AMissingProjectUnit) {
    std::filesystem::remove(unitFile("Pump.ory"));
    open();
    EXPECT_THAT(problem(), HasSubstr("Pump.ory: the file is missing"));
}

class BrokenProjectFile : public BrokenModel,
                          public testing::WithParamInterface<std::pair<const char *, const char *>> {};

TEST_P(BrokenProjectFile, IsRefusedWithItsPlace) {
    write(path("Pump.orp"), GetParam().first);
    open();
    EXPECT_THAT(problem(), HasSubstr(std::string("/Pump.orp:") + GetParam().second));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BrokenProjectFile,
    testing::Values(std::pair("", "1:1: the file is empty"),
                    std::pair("hello\n", "1:1: this is not a project file"),
                    std::pair("orchard-project 1\n", "2:1: the units directory is not named"),
                    std::pair("orchard-project 1\nunits ../x\n", "2:7: the name of the units"),
                    std::pair("orchard-project 1\nunits a\nstub 12\n", "3:6: expected an identifier"),
                    std::pair("orchard-project 1\nunits a\nstate 12 1\n", "3:7: expected an identifier"),
                    std::pair("orchard-project 1\nunits a\nstate 0f3c0000-0000-0000-0000-000000000001 1x\n",
                              "3:44: expected a number"),
                    std::pair("orchard-project 1\nunits a\nstate 0f3c0000-0000-0000-0000-000000000001\n",
                              "3:43: expected a number"),
                    std::pair("orchard-project 1\nunits a\nfoo\n", "3:1: expected a line")));

} // namespace
