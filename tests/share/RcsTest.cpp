// The property set of RCS against what RCS says and does.
#include "CM/host/SPString.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace {

std::string rcs(const char *key) {
    static const orchard::InstalledSets all({std::filesystem::path(SHARE_DIRECTORY) / "toolsets"});
    const IProperty *const property = all.find("ConfigurationManagement", "RCS", key);
    return property == nullptr ? "(none)" : property->getValue().str();
}

enum class Kind { nothing, warning, error };

struct Row {
    const char *name;
    const char *text;
    Kind kind;
    friend std::ostream &operator<<(std::ostream &stream, const Row &row) { return stream << row.text; }
};

class RcsMessage : public testing::TestWithParam<Row> {};

TEST_P(RcsMessage, IsTakenForWhatItIs) {
    const SPString text(GetParam().text);
    const bool isError = text.m(rcs("OperationErrorPattern"), "i") != 0;
    const bool isWarning = text.m(rcs("OperationWarningPattern"), "i") != 0;
    EXPECT_EQ(isError, GetParam().kind == Kind::error);
    EXPECT_EQ(isError || isWarning, GetParam().kind != Kind::nothing);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RcsMessage,
    testing::Values(
        Row{"Locked", "co: RCS/a.ocl,v: Revision 1.1 is already locked by other.\n", Kind::error},
        Row{"NoArchive", "co: RCS/missing.ocl,v: No such file or directory\n", Kind::error},
        Row{"Writable", "co: writable a.ocl exists; checkout aborted\n", Kind::error},
        Row{"NoRevision", "co: RCS/a.ocl,v: revision 9 absent\n", Kind::error},
        Row{"NoLabel", "co: RCS/a.ocl,v: Symbolic name `x' is undefined.\n", Kind::error},
        Row{"BrokenArchive", "\nco: RCS/g.ocl,v:1: missing `head' keyword\nco aborted\n", Kind::error},
        Row{"NoLock", "ci: RCS/a.ocl,v: no lock set by root\n", Kind::error},
        Row{"StillLocked", "Revision 1.1 is already locked by a.\nrcs: RCS/a,v: revision 1.1 still locked by a\n",
            Kind::error},
        Row{"NoInput", "co: no input file\nco aborted\n", Kind::error},
        Row{"NotThere", "co: No such file or directory; is the tool installed?\n", Kind::error},
        Row{"NotThereForTheShell", "sh: 1: co: not found\n", Kind::error},
        Row{"NotThereForTheShellByPath", "/bin/sh: 1: co: not found\n", Kind::error},
        Row{"Killed", "error: the command was ended by signal 9 (Killed)\n", Kind::error},
        Row{"AFileCalledWarning", "co: RCS/warning.ocl,v: No such file or directory\n", Kind::error},
        Row{"AnObsoleteOption", "co: warning: -V is obsolete; instead, use --version\n", Kind::warning},
        Row{"AWarningOnAFile", "ci: RCS/a,v: warning: Unknown phrases like `x ...;' are present.\n",
            Kind::warning},
        Row{"AWarningAndAnError", "co: RCS/a,v: warning: odd\nco: RCS/a,v: revision 9 absent\n", Kind::error},
        Row{"AGoodRun", "RCS/a.ocl,v  -->  a.ocl\nrevision 1.1 (locked)\ndone\n", Kind::nothing},
        Row{"AFileThatSpeaksOfErrors", "RCS/co: x,v  -->  error.ocl\n", Kind::nothing}),
    [](const auto &row) { return row.param.name; });

struct HeaderRow {
    const char *name;
    const char *text;
    const char *locker;
    const char *version;
    friend std::ostream &operator<<(std::ostream &stream, const HeaderRow &row) { return stream << row.name; }
};

class RcsHeader : public testing::TestWithParam<HeaderRow> {};

TEST_P(RcsHeader, TellsTheLockerAndTheVersion) {
    const SPString text(GetParam().text);
    SPStringList locker;
    SPStringList version;
    static_cast<void>(text.m(rcs("HeaderItsLocker"), locker, "i"));
    static_cast<void>(text.m(rcs("HeaderItsVersion"), version, "i"));
    EXPECT_EQ(locker[1].str(), GetParam().locker);
    EXPECT_EQ(version[1].str(), GetParam().version);
}

INSTANTIATE_TEST_SUITE_P(Rows, RcsHeader,
                         testing::Values(HeaderRow{"Free",
                                                   "$Revision: 1.12.2.3 $\n$Date: 2026/11/21 08:58:54 $\n"
                                                   "$Author: ann $\n$Locker:  $\n",
                                                   "", "1.12.2.3"},
                                         HeaderRow{"Locked", "$Revision: 1.1 $\n$Locker: bob $\n", "bob", "1.1"},
                                         HeaderRow{"NotYetExpanded", "$Revision$\n$Locker$\n", "", ""}),
                         [](const auto &row) { return row.param.name; });

TEST(RcsModes, TakeAndGiveUpTheLock) {
    EXPECT_EQ(rcs("ReadOnly"), "-u");
    EXPECT_EQ(rcs("ReadWrite"), "-l");
}

} // namespace
