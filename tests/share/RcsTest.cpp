// Tests the property set of RCS on the output and the effects of RCS.
#include "tests/share/ToolSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using share_tests::Kind;
using share_tests::Listed;
using share_tests::ToolSet;
using testing::ElementsAre;
using testing::IsEmpty;
using Row = share_tests::MessageRow;

namespace {

const ToolSet rcs("RCS");

class RcsMessage : public testing::TestWithParam<Row> {};

TEST_P(RcsMessage, IsTakenForWhatItIs) { EXPECT_EQ(rcs.kindOf(GetParam().text), GetParam().kind); }

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
        Row{"TakenLabel", "rcs: RCS/a.ocl,v: symbolic name REL already bound to 1.1\n", Kind::error},
        Row{"AddedTwice", "rcs: /w/RCS/a.ocl,v: already exists\n", Kind::error},
        Row{"NoDirectoryForTheArchive", "mkdir: cannot create directory '/a': Permission denied\n", Kind::error},
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
    EXPECT_EQ(rcs.find("HeaderItsLocker", GetParam().text), GetParam().locker);
    EXPECT_EQ(rcs.find("HeaderItsVersion", GetParam().text), GetParam().version);
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
    EXPECT_EQ(rcs.value("ReadOnly"), "-u");
    EXPECT_EQ(rcs.value("ReadWrite"), "-l");
}

constexpr auto listing =
    "\nRCS file: ./Drives/Püm pe.ocl,v\nWorking file: Püm pe.ocl\nhead: 1.12\nbranch:\nlocks: strict\n"
    "\tbob: 1.12\n\tanna: 1.3\naccess list:\nkeyword substitution: kv\ntotal revisions: 12\n"
    "=============================================================================\n"
    "\nRCS file: ./-x.ocl,v\nWorking file: -x.ocl\nhead: 1.2\nbranch:\nlocks: strict\naccess list:\n"
    "symbolic names:\n\tREL: 1.1\nkeyword substitution: b\ntotal revisions: 2\n"
    "=============================================================================\n";

TEST(RcsListing, HoldsFilesWithVersionAndLocker) {
    EXPECT_THAT(rcs.list(listing),
                ElementsAre(Listed{"Drives/Püm pe.ocl", "1.12", "rw", "bob"}, Listed{"-x.ocl", "1.2", "ro", ""}));
}

TEST(RcsListing, OfAnEmptyArchiveIsEmpty) { EXPECT_THAT(rcs.list(""), IsEmpty()); }

} // namespace
