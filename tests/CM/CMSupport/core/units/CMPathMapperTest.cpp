#include "CM/CMSupport/core/CMPathMapper.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class PathMapper : public CoreFixture {
  protected:
    PathMapper() { project().directory = "/w"; }
};

TEST_F(PathMapper, TakesThePartBelowTheWorkingDirectoryWithoutSeparatorsAtItsEnds) {
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("/w/sub/deep"), "sub/deep");
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("  /w//sub/\\  "), "sub");
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("/w/ sub /"), " sub ");
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("/w"), "");
}

TEST_F(PathMapper, GivesAPathElsewhereBackTrimmed) {
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath(" /else "), "/else");
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("  "), "");
}

TEST_F(PathMapper, CountsTheLengthWhereverTheWorkingDirectoryStands) {
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("/data/w/sub"), "ata/w/sub");
}

TEST_F(PathMapper, PutsSubdirectoriesIntoTheTemplate) {
    setToolProperty("Repository", "/arch$SubDirs/RCS");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/arch/sub/RCS");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w"), "/arch/RCS");
}

TEST_F(PathMapper, ExpandsTheArchiveInTheTemplate) {
    setToolProperty(IPN::CMArchive, "/main");
    setToolProperty("Repository", "$archive$SubDirs");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/main/sub");
}

TEST_F(PathMapper, GivesATemplateWithoutSubdirectoriesUnchanged) {
    setToolProperty("Repository", "/arch");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/arch");
}

TEST_F(PathMapper, GivesThePathUnchangedWithoutALayout) {
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath(" /w/sub "), " /w/sub ");
    setToolProperty("Repository", "");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/w/sub");
    setToolProperty("Repository", "$ArchivePath/RCS");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/w/sub");
}

TEST_F(PathMapper, BringsAnArchivePathBack) {
    setToolProperty("Repository", "/arch");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath(" /arch/sub/deep/ "), "/w/sub/deep");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath("/arch"), "/w/");
}

TEST_F(PathMapper, BringsAnArchivePathElsewhereBackToTheWorkingDirectory) {
    setToolProperty("Repository", "/arch");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath("/else/sub"), "/w/");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath("  "), "");
}

TEST_F(PathMapper, GivesAnArchivePathBackTrimmedWithoutALayout) {
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath(" /arch/sub "), "/arch/sub");
    setToolProperty("Repository", "$ArchivePath");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath(" /arch/sub "), "/arch/sub");
}

TEST_F(PathMapper, TakesTheDirectoryOfTheProjectFileInTheOldLayout) {
    setOldLayout();
    project().projectFileDirectory = "/old";
    setToolProperty("Repository", "/arch$SubDirs");
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath("/old/sub"), "sub");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/old/sub"), "/arch/sub");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/arch//w/sub") << "it is not below";
    setToolProperty("Repository", "/arch");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath("/arch/sub"), "/old/sub");
}

TEST_F(PathMapper, GivesPathsBackOnceTheProjectIsGone) {
    setToolProperty("Repository", "/arch$SubDirs");
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMPathMapper::getArchiveSubDirFromLocalPath(" /w/sub/ "), "w/sub");
    EXPECT_EQ(CMPathMapper::getArchivePathFromLocalPath("/w/sub"), "/w/sub");
    EXPECT_EQ(CMPathMapper::getLocalPathFromArchivePath(" /arch/sub "), "/arch/sub");
}

} // namespace
