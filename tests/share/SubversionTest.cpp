// Tests the property set of Subversion on the output of Subversion.
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

const ToolSet subversion("Subversion");

class SubversionMessage : public testing::TestWithParam<MessageRow> {};

TEST_P(SubversionMessage, IsTakenForWhatItIs) { EXPECT_EQ(subversion.kindOf(GetParam().text), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(
    Rows, SubversionMessage,
    testing::Values(
        MessageRow{"LockedByAnother",
                   "svn: warning: W160035: Path '/a.ocl' is already locked by user 'bob' in filesystem '4dc9'\n"
                   "svn: E200009: One or more locks could not be obtained\n",
                   Kind::error},
        MessageRow{"LockedByAnotherAlone",
                   "svn: warning: W160035: Path '/a.ocl' is already locked by user 'bob' in filesystem '4dc9'\n",
                   Kind::error},
        MessageRow{"LockOfAnOldVersion", "svn: warning: W160042: Lock failed: newer version of '/a.ocl' exists\n",
                   Kind::error},
        MessageRow{"OutOfDate",
                   "svn: E155011: Commit failed (details follow):\nsvn: E155011: File '/w/a.ocl' is out of date\n",
                   Kind::error},
        MessageRow{"NoRevision", "svn: E160006: No such revision 99\n", Kind::error},
        MessageRow{"NoWorkingCopy", "svn: E155007: '/w' is not a working copy\n", Kind::error},
        MessageRow{"NoRepository", "svn: E170013: Unable to connect to a repository at URL 'file:///r'\n",
                   Kind::error},
        MessageRow{"NotKnown", "svn: warning: W155010: The node '/w/a.ocl' was not found.\n", Kind::error},
        MessageRow{"ALabelAtCheckIn",
                   "svn: no label 'L-1' can be given: Subversion has none for versions of a file\n", Kind::error},
        MessageRow{"NoArchiveMade", "svnadmin: E200011: Repository creation failed\n", Kind::error},
        MessageRow{"NoArchiveSet", "svn: no archive is set: give the property CMArchive the address\n",
                   Kind::error},
        MessageRow{"NotThere", "env: 'svn': No such file or directory\n", Kind::error},
        MessageRow{"NotThereForTheShell", "sh: 1: svnadmin: not found\n", Kind::error},
        MessageRow{"Killed", "error: the command was ended by signal 9 (Killed)\n", Kind::error},
        MessageRow{"AWarning", "svn: warning: W200007: Target '/w' already has the property\n", Kind::warning},
        MessageRow{"ALock", "'Pump.ocl' locked by user 'anna'.\n", Kind::nothing},
        MessageRow{"AHistoryThatSpeaksOfErrors", "r7 | anna\n\nMends the svn: E155011: error: of the pump\n",
                   Kind::nothing}),
    [](const auto &row) { return row.param.name; });

constexpr auto listing = "Path: station_ory\n"
                         "URL: file:///r/station_ory\n"
                         "Node Kind: directory\n"
                         "Last Changed Author: anna\n"
                         "Last Changed Rev: 9\n"
                         "\n"
                         "Path: Drives/v1.2\n"
                         "URL: file:///r/station_ory/Drives/v1.2\n"
                         "Node Kind: directory\n"
                         "Last Changed Rev: 7\n"
                         "\n"
                         "Path: Drives/Püm pe.ocl\n"
                         "Name: Püm pe.ocl\n"
                         "URL: file:///r/station_ory/Drives/P%C3%BCm%20pe.ocl\n"
                         "Repository Root: file:///r\n"
                         "Revision: 9\n"
                         "Node Kind: file\n"
                         "Last Changed Author: anna\n"
                         "Last Changed Rev: 7\n"
                         "Lock Token: opaquelocktoken:3dbc\n"
                         "Lock Owner: bob of sales\n"
                         "Lock Created: 2026-11-21 11:42:58 +0000 (Sat, 21 Nov 2026)\n"
                         "Lock Comment (3 lines):\n"
                         "Path: not a path\n"
                         "\n"
                         "Name: not a name\n"
                         "\n"
                         "Path: -x.ocl\n"
                         "Name: -x.ocl\n"
                         "Revision: 9\n"
                         "Node Kind: file\n"
                         "Last Changed Rev: 12\n"
                         "Last Changed Date: 2026-11-21 11:42:58 +0000 (Sat, 21 Nov 2026)\n"
                         "\n";

TEST(SubversionListing, HoldsFilesWithVersionAndLocker) {
    EXPECT_THAT(subversion.list(listing), ElementsAre(Listed{"Drives/Püm pe.ocl", "7", "rw", "bob of sales"},
                                                      Listed{"-x.ocl", "12", "ro", ""}));
}

TEST(SubversionListing, OfAnEmptyArchiveIsEmpty) {
    EXPECT_THAT(subversion.list("Path: station_ory\nURL: file:///r/station_ory\nRevision: 1\n\n"), IsEmpty());
}

TEST(SubversionHeader, TellsTheVersion) {
    EXPECT_EQ(subversion.find("HeaderItsVersion", "$Revision: 12 $\n$Date: 2026-11-21 11:42:58 +0000 $\n"), "12");
    EXPECT_EQ(subversion.find("HeaderItsVersion", "$Revision$\n$Date$\n"), "");
}

TEST(SubversionConnect, FindsTheAddress) {
    const char *const key = "HeaderInfoItsRepositoryPath";
    EXPECT_EQ(subversion.find(key, "file:///srv/p%20q/station_ory\n"), "file:///srv/p%20q/station_ory");
    EXPECT_EQ(subversion.find(key, "svn+ssh://anna@host/x\n"), "svn+ssh://anna@host/x");
    EXPECT_EQ(subversion.find(key, "svn: E155007: '/w' is not a working copy\n"), "");
}

} // namespace
