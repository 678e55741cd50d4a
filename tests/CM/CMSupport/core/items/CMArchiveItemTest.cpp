#include "CM/CMSupport/core/CMArchiveItem.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <algorithm>

namespace {

class ArchiveItem : public CoreFixture {
  protected:
    ArchiveItem() { project().directory = "/w"; }
    static CMArchiveItem item(const CString &name) { return {name, "1.2", CMArchiveItem::readOnly, "", ""}; }
    static CString shortPath(const CString &name) { return item(name).getNameNShortPath(true); }
};

TEST_F(ArchiveItem, HoldsWhatTheListOperationReported) {
    CMArchiveItem one("sub/Pump.ocl", "1.2", CMArchiveItem::readWrite, "ann", "new");
    EXPECT_EQ(one.getFileNameWithPath(), "sub/Pump.ocl");
    EXPECT_EQ(one.getVersion(), "1.2");
    EXPECT_EQ(one.getMode(), CMArchiveItem::readWrite);
    EXPECT_EQ(one.getLocker(), "ann");
    EXPECT_EQ(one.getStatus(), "new");
    one.setStatus("changed");
    EXPECT_EQ(one.getStatus(), "changed");
}

TEST_F(ArchiveItem, SplitsItsName) {
    const auto one = item("sub/Pump.v2.ocl");
    EXPECT_EQ(one.getSuffix(), ".ocl");
    EXPECT_EQ(one.getFileName(), "Pump.v2.ocl");
    EXPECT_EQ(one.getName(), "Pump.v2");
    EXPECT_EQ(one.getType(), "Class");
}

TEST_F(ArchiveItem, WithoutADotHasNoSuffix) {
    const auto one = item("sub/Makefile");
    EXPECT_EQ(one.getSuffix(), "");
    EXPECT_EQ(one.getName(), "Makefile");
    EXPECT_EQ(one.getFileName(), "Makefile");
}

TEST_F(ArchiveItem, IsCutAtADotInADirectoryNameToo) {
    const auto one = item("proj/sub.v2/Makefile");
    EXPECT_EQ(one.getSuffix(), ".v2/Makefile");
    EXPECT_EQ(one.getName(), "sub");
    EXPECT_EQ(one.getFileName(), "Makefile");
}

TEST_F(ArchiveItem, OfAHiddenFileHasASuffixAlone) {
    const auto one = item(".hidden");
    EXPECT_EQ(one.getSuffix(), ".hidden");
    EXPECT_EQ(one.getName(), "");
    EXPECT_EQ(one.getFileName(), ".hidden");
}

TEST_F(ArchiveItem, IsCutAtTheLaterOfMixedSeparators) {
    EXPECT_EQ(item(R"(a\b/Pump.ocl)").getFileName(), "Pump.ocl");
    EXPECT_EQ(item(R"(a/b\Pump.ocl)").getName(), "Pump");
}

// The short path.

TEST_F(ArchiveItem, InTheOldLayoutHasNoPath) {
    setOldLayout();
    EXPECT_EQ(item("sub/Pump.ocl").getNameNShortPath(true), "Pump.ocl");
    EXPECT_EQ(item("sub/Pump.ocl").getNameNShortPath(false), "Pump");
}

TEST_F(ArchiveItem, WithoutATemplateIsRelativeToTheWorkingDirectoryInAnyCase) {
    project().directory = "/Work";
    EXPECT_EQ(item("/wORK/sub/Pump.ocl").getNameNShortPath(true), "sub/Pump.ocl");
    EXPECT_EQ(item("/Work/sub/Pump.ocl").getNameNShortPath(false), "sub/Pump");
    EXPECT_EQ(shortPath("/else/sub/Pump.ocl"), "/else/sub/Pump.ocl");
    EXPECT_EQ(shortPath("/W"), "/W");
}

TEST_F(ArchiveItem, LosesACharacterWithoutAWorkingDirectory) {
    host.model.activeProject = nullptr; // every name begins with the empty text, and one character goes with it
    EXPECT_EQ(shortPath("sub/Pump.ocl"), "ub/Pump.ocl");
}

TEST_F(ArchiveItem, OnTheProviderRouteIgnoresTheTemplate) {
    setToolProperty("Repository", "/arch/$SubDirs/$FileName");
    host.setProperty(nullptr, IPN::CM, "SCC", "Repository", "/arch/$SubDirs/$FileName");
    setProviderRoute();
    EXPECT_EQ(shortPath("/arch/sub/Pump.ocl"), "/arch/sub/Pump.ocl");
}

struct Layout {
    const char *what;
    const char *layout;
    const char *name;
    const char *shortPath;
    friend void PrintTo(const Layout &row, std::ostream *stream) { *stream << row.what; }
};

class ShortPath : public ArchiveItem, public testing::WithParamInterface<Layout> {};

TEST_P(ShortPath, FollowsTheTemplate) {
    setToolProperty("Repository", GetParam().layout);
    EXPECT_EQ(shortPath(GetParam().name), GetParam().shortPath);
}
INSTANTIATE_TEST_SUITE_P(
    ArchiveItem, ShortPath,
    testing::Values(
        Layout{"archive path", "$ArchivePath/$SubDirs/$FileName", "/arch/Pump.ocl", "/arch/Pump.ocl"},
        Layout{"archive path in front", "$ArchivePath$SubDirs/RCS/$FileName", "a/RCS/Pump.ocl", "a/RCS/Pump.ocl"},
        Layout{"no directories", "/arch/$FileName", "/arch/Pump.ocl", "/arch/Pump.ocl"},
        Layout{"no file", "/arch/$SubDirs", "/arch/Pump.ocl", "/arch/Pump.ocl"},
        Layout{"root", "/arch/$SubDirs/$FileName", "/arch/sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"root in any case", "/Arch/$SubDirs/$FileName", "/aRCH/sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"another root", "/arch/$SubDirs/$FileName", "/else/sub/Pump.ocl", "/else/sub/Pump.ocl"},
        Layout{"no root", "$SubDirs/$FileName", "sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"backslash between", R"($SubDirs\$FileName)", R"(sub\Pump.ocl)", R"(sub\Pump.ocl)"},
        Layout{"nothing between", "/arch/$SubDirs$FileName", "/arch/sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"subdirectory between", "/arch/$SubDirs/RCS/$FileName,v", "/arch/sub/RCS/Pump.ocl", "sub/Pump.ocl"},
        Layout{"between in any case", "$SubDirs/RCS/$FileName", "sub/rcs/Pump.ocl", "sub/Pump.ocl"},
        Layout{"without what is between", "$SubDirs/RCS/$FileName", "sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"elsewhere in the path", "$SubDirs/RCS/$FileName", "RCS/sub/Pump.ocl", "RCS/sub/Pump.ocl"},
        Layout{"mixed separators", R"($SubDirs/RCS\$FileName)", R"(sub/RCS\Pump.ocl)", "sub/Pump.ocl"},
        Layout{"file before directories", "/arch/$FileName/$SubDirs", "/arch/sub/Pump.ocl", "sub/Pump.ocl"},
        Layout{"shorter than what is between", "$SubDirs/RCS/$FileName", "/Pump.ocl", "/Pump.ocl"}),
    [](const auto &row) {
        std::string name = row.param.what;
        std::ranges::replace(name, ' ', '_');
        return name;
    });

TEST_F(ArchiveItem, LosesItsSuffixUnderATemplateToo) {
    setToolProperty("Repository", "/arch/$SubDirs/RCS/$FileName");
    EXPECT_EQ(item("/arch/sub/RCS/Pump.ocl").getNameNShortPath(false), "sub/Pump");
}

TEST_F(ArchiveItem, IsCutAtItsLastDotBeforeTheTemplateApplies) {
    setToolProperty("Repository", "/arch/$SubDirs/RCS.d/$FileName");
    EXPECT_EQ(item("/arch/sub/RCS.d/Makefile").getNameNShortPath(false), "sub/RCS");
}

TEST(ArchiveItemModes, HaveFixedNumbers) {
    EXPECT_EQ(CMArchiveItem::unknown, 0);
    EXPECT_EQ(CMArchiveItem::readOnly, 1);
    EXPECT_EQ(CMArchiveItem::readWrite, 2);
}

// Places in the workspace.

TEST_F(ArchiveItem, HasNoLocalPathWithoutAProject) {
    host.model.activeProject = nullptr;
    EXPECT_EQ(item("sub/Pump.ocl").getLocalPath(), "");
}

TEST_F(ArchiveItem, OfTheProjectsOwnFileStandsInTheUnitsDirectory) {
    setOldLayout();
    EXPECT_EQ(item("deep/below/pLANT.ory").getLocalPath(), "/w");
}

TEST_F(ArchiveItem, StandsBelowTheWorkingDirectory) {
    EXPECT_EQ(item("sub/deep/Pump.ocl").getLocalPath(), "/w/sub/deep");
    EXPECT_EQ(item("/w/sub/Pump.ocl").getLocalPath(), "/w/sub");
    EXPECT_EQ(item("Pump.ocl").getLocalPath(), "/w");
}

TEST_F(ArchiveItem, StandsWhereTheTemplatePutsItBelowTheWorkingDirectory) {
    setToolProperty("Repository", "/arch/$SubDirs/RCS/$FileName");
    EXPECT_EQ(item("/arch/sub/RCS/Pump.ocl").getLocalPath(), "/w/sub");
    EXPECT_EQ(item("/arch/sub/RCS/Pump.ocl").getFullUnitFileName(), "/w/sub/Pump.ocl");
}

TEST_F(ArchiveItem, WithoutADotStandsWhereItsPathCutAtADotInADirectoryNameStands) {
    EXPECT_EQ(item("proj/sub.v2/Makefile").getLocalPath(), "/w/proj");
    EXPECT_EQ(item("proj/sub/Makefile").getLocalPath(), "/w/proj/sub");
}

TEST_F(ArchiveItem, StandsBelowTheUnitsDirectoryIfTheWorkingDirectoryIsEmpty) {
    setOldLayout();
    project().projectFileDirectory = "";
    EXPECT_EQ(item("sub/Pump.ocl").getLocalPath(), "/w");
}

TEST_F(ArchiveItem, GivesTheFullNameOfItsUnitsFile) {
    EXPECT_EQ(item("sub/Pump.ocl").getFullUnitFileName(), "/w/sub/Pump.ocl");
}

TEST_F(ArchiveItem, OfAnExternalUnitIsKeptWhereTheToolReportsIt) {
    auto &pump = host.addUnit("Pump");
    pump.reposName = "/far/Pump.ocl";
    EXPECT_EQ(item("/far/Pump.ocl").getFullUnitFileName(), "/w//far/Pump.ocl") << "a unit that is not external";
    pump.external = true;
    EXPECT_EQ(item("/far/Pump.ocl").getFullUnitFileName(), "/far/Pump.ocl");
}

TEST_F(ArchiveItem, IsKnownByItsFileNameAlone) {
    EXPECT_EQ(item("sub/Pump.ocl").getFileNameForRepFiles(), "Pump.ocl");
}

TEST_F(ArchiveItem, IsKnownByItsFullPathIfTheHostKeepsFullPaths) {
    host.model.fullPathRepFiles = true;
    EXPECT_EQ(item("sub/Pump.ocl").getFileNameForRepFiles(), "/w/sub/Pump.ocl");
    EXPECT_EQ(item("./sub/Pump.ocl").getFileNameForRepFiles(), "/w/sub/Pump.ocl");
    EXPECT_EQ(item(".hidden").getFileNameForRepFiles(), "/whidden");
    EXPECT_EQ(item("/far/Pump.ocl").getFileNameForRepFiles(), "/far/Pump.ocl");
}

TEST_F(ArchiveItem, IsKnownByTheNameAsItStandsWithoutAProject) {
    host.model.fullPathRepFiles = true;
    host.model.activeProject = nullptr;
    EXPECT_EQ(item("./sub/Pump.ocl").getFileNameForRepFiles(), "./sub/Pump.ocl");
}

} // namespace
