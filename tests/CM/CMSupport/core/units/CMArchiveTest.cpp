#include "CM/CMSupport/core/CMArchive.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <array>

using testing::HasSubstr;
using testing::Not;

namespace {

class Archive : public CoreFixture {
  protected:
    static CString directoryOf(const CString &archive) {
        return CMArchive(archive).substitute("ArchiveDirectory");
    }
};

TEST_F(Archive, AnswersToItsNamesInAnyCase) {
    const CMArchive archive("/arch");
    EXPECT_EQ(archive.isNamed("Archive"), 1);
    EXPECT_EQ(archive.isNamed("ARCHIVEDIRECTORY"), 1);
    EXPECT_EQ(archive.isNamed("ArchivePath"), 0);
    EXPECT_EQ(CMArchive("/arch").substitute("ArchivePath"), "ArchivePath");
}

TEST_F(Archive, GivesItsTextOrTheMainArchive) {
    setToolProperty(IPN::CMArchive, "/main");
    EXPECT_EQ(CMArchive("/arch").substitute("archive"), "/arch");
    EXPECT_EQ(CMArchive("").substitute("ARCHIVE"), "/main");
}

TEST_F(Archive, ThatDoesNotExistIsGivenAsItIsWithATraceForItsDirectory) {
    traceOn();
    const CString missing = (scratch / "missing").string();
    EXPECT_EQ(CMArchive(missing).substitute("archive"), missing);
    EXPECT_THAT(shown.str(), Not(HasSubstr("_tstat")));
    EXPECT_EQ(directoryOf(missing), missing);
    EXPECT_EQ(shown.str(), "+++ Problem getting _tstat information about " + missing.str() + "\n");
}

TEST_F(Archive, GivesTheDirectoryOfAFile) {
    write(scratch / "arch.db", "");
    EXPECT_EQ(directoryOf((scratch / "arch.db").string()), scratch.string());
}

TEST_F(Archive, GivesADirectoryAsItIs) { EXPECT_EQ(directoryOf(scratch.string()), scratch.string()); }

TEST_F(Archive, GivesNoDirectoryForAFileWithoutASeparator) {
    write(scratch / "arch.db", "");
    std::filesystem::current_path(scratch);
    EXPECT_EQ(directoryOf("arch.db"), "");
}

class Selection : public Archive, public testing::WithParamInterface<std::pair<const char *, int>> {};

TEST_P(Selection, IsReadWithoutRegardToCase) {
    setToolProperty(IPN::CMArchiveSelection, GetParam().first);
    EXPECT_EQ(CMArchive::getArchiveSelection(), GetParam().second);
}
std::string selectionName(const testing::TestParamInfo<std::pair<const char *, int>> &row) {
    constexpr std::array names{"Directory", "DirectoryInCapitals", "File", "FileInSmallLetters",
                               "Nothing",   "AnotherWord"};
    return names.at(row.index);
}
INSTANTIATE_TEST_SUITE_P(Archive, Selection,
                         testing::Values(std::pair("Directory", 0), std::pair("DIRECTORY", 0),
                                         std::pair("File", 1), std::pair("file", 1), std::pair("", 2),
                                         std::pair("Files", 2)),
                         selectionName);

TEST_F(Archive, IsOneForTheProjectByDefault) {
    EXPECT_EQ(CMArchive::getArchiveSelection(), 2);
    setToolProperty(IPN::CMArchiveSelection, "File");
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMArchive::getArchiveSelection(), 2);
}

TEST_F(Archive, HasPredefinedVariablesExpanded) {
    setToolProperty(IPN::CMArchive, "$orpdirectory/arch");
    EXPECT_EQ(CMArchive::getMainArchive(), (scratch / "arch").string());
}

TEST_F(Archive, IsUsedAlsoIfTheExpansionFails) {
    host.places.root = "";
    setToolProperty(IPN::CMArchive, "$orpdirectory/arch");
    EXPECT_EQ(CMArchive::getMainArchive(), (scratch / "arch").string());
}

TEST_F(Archive, IsEmptyWithoutAPropertyOrAProject) {
    EXPECT_EQ(CMArchive::getMainArchive(), "");
    setToolProperty(IPN::CMArchive, "/main");
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMArchive::getMainArchive(), "");
}

TEST_F(Archive, IsSetOnTheProject) {
    setToolProperty(IPN::CMArchive, "/main");
    EXPECT_EQ(CMArchive::setMainArchive("/other"), 1);
    EXPECT_EQ(CMArchive::getMainArchive(), "/other");
    EXPECT_THAT(host.callsOf("store property"),
                testing::ElementsAre("store property ConfigurationManagement/RCS/CMArchive=/other on Plant"));
}

TEST_F(Archive, IsNotSetWithoutAnOpenProjectOrAKnownProperty) {
    EXPECT_EQ(CMArchive::setMainArchive("/other"), 0);
    setToolProperty(IPN::CMArchive, "/main");
    host.model.projectIsOpen = false;
    EXPECT_EQ(CMArchive::setMainArchive("/other"), 0);
    host.model.projectIsOpen = true;
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMArchive::setMainArchive("/other"), 0);
}

} // namespace
