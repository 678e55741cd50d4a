// Tests the property set of CVS on the output of CVS.
#include "tests/share/ToolSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using share_tests::Kind;
using share_tests::Listed;
using share_tests::MessageRow;
using share_tests::ToolSet;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ToolSet cvs("CVS");

class CvsMessage : public testing::TestWithParam<MessageRow> {};

TEST_P(CvsMessage, IsTakenForWhatItIs) { EXPECT_EQ(cvs.kindOf(GetParam().text), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(
    Rows, CvsMessage,
    testing::Values(
        MessageRow{"EditedByAnother",
                   "cvs edit: Skipping file `Pump.ocl' due to existing editors.\n"
                   "Pump.ocl\tanna\tSat Nov 21 11:56:48 2026 -0000\thost\t/w\n",
                   Kind::error},
        MessageRow{"NoEdit",
                   "cvs commit: Valid edit does not exist for station.ory\n"
                   "cvs [commit aborted]: correct above errors first!\n",
                   Kind::error},
        MessageRow{"NotKnown", "cvs commit: nothing known about `Panel.ocl'\n", Kind::error},
        MessageRow{"NotKnownForAnUpdate", "cvs update: use `cvs add' to create an entry for `Panel.ocl'\n",
                   Kind::error},
        MessageRow{"NoTag", "cvs [update aborted]: no such tag `nope'\n", Kind::error},
        MessageRow{"TakenTag", "cvs tag: REL: tag exists but is for a different version\n", Kind::error},
        MessageRow{"OutOfDate", "cvs commit: Up-to-date check failed for `Pump.ocl'\n", Kind::error},
        MessageRow{"OutOfDateOnAServer", "cvs server: Up-to-date check failed for `Pump.ocl'\n", Kind::error},
        MessageRow{"NoDirectory", "cvs commit: in directory .:\n", Kind::error},
        MessageRow{"NotThere", "env: 'cvs': No such file or directory\n", Kind::error},
        MessageRow{"NotThereForTheShell", "sh: 23: cvs: not found\n", Kind::error},
        MessageRow{"Killed", "error: the command was ended by signal 9 (Killed)\n", Kind::error},
        MessageRow{"ALostFile", "cvs update: warning: `Pump.ocl' was lost\n", Kind::warning},
        MessageRow{"AFileBroughtUpToDate", "U Pump.ocl\n", Kind::nothing},
        MessageRow{"ABackup", "(Locally modified Pump.ocl moved to .#Pump.ocl.1.1)\nU Pump.ocl\n", Kind::nothing},
        MessageRow{"ACheckIn", "/r/st/cvs.ocl,v  <--  cvs.ocl\nnew revision: 1.2; previous revision: 1.1\n",
                   Kind::nothing},
        MessageRow{"AHistoryThatSpeaksOfErrors", "revision 1.2\nMends the error: of the pump, said cvs: no\n",
                   Kind::nothing}),
    [](const auto &row) { return row.param.name; });

TEST(CvsListing, HoldsFilesWithVersionAndEditor) {
    EXPECT_THAT(
        cvs.list("Working file: Drives/Püm pe.ocl\nhead: 1.12\nEditor: bob\n\n"
                 "Working file: -x.ocl\nhead: 1.2.2.1\n\n"),
        ElementsAre(Listed{"Drives/Püm pe.ocl", "1.12", "rw", "bob"}, Listed{"-x.ocl", "1.2.2.1", "ro", ""}));
}

TEST(CvsListing, OfAnEmptyArchiveIsEmpty) { EXPECT_THAT(cvs.list("\n"), IsEmpty()); }

TEST(CvsHeader, TellsTheVersion) {
    EXPECT_EQ(cvs.find("HeaderItsVersion", "$Revision: 1.2 $\n$Date: 2026/11/21 11:42:58 $\n"), "1.2");
    EXPECT_EQ(cvs.find("HeaderItsVersion", "$Revision$\n"), "");
}

TEST(CvsConnect, FindsRootAndModule) {
    const char *const key = "HeaderInfoItsRepositoryPath";
    EXPECT_EQ(cvs.find(key, "/srv/c v s/station_ory\n"), "/srv/c v s/station_ory");
    EXPECT_EQ(cvs.find(key, "U Pump.ocl\n:ext:anna@host:/srv/cvs/station_ory\n"),
              ":ext:anna@host:/srv/cvs/station_ory");
    EXPECT_EQ(cvs.find(key, "cvs [init aborted]: cannot make directory\n"), "");
}

} // namespace
