// Tests the property set of Mercurial on the output of Mercurial.
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

const ToolSet mercurial("Mercurial");

class MercurialMessage : public testing::TestWithParam<MessageRow> {};

TEST_P(MercurialMessage, IsTakenForWhatItIs) { EXPECT_EQ(mercurial.kindOf(GetParam().text), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(
    Rows, MercurialMessage,
    testing::Values(
        MessageRow{"NoRepository", "abort: no repository found in '/w' (.hg not found)\n", Kind::error},
        MessageRow{"NotTracked", "abort: sub/ö.ocl: file not tracked!\n", Kind::error},
        MessageRow{"NotManaged", "file not managed: un.ocl\n", Kind::error},
        MessageRow{"NotInTheRevision", "nope.ocl: no such file in rev 6ecf4adbbf32\n", Kind::error},
        MessageRow{"NoFile", "nope.ocl: No such file or directory\n", Kind::error},
        MessageRow{"NoLabel", "abort: unknown revision 'nope'\n", Kind::error},
        MessageRow{"TakenLabel", "abort: tag 'v1' already exists (use -f to force)\n", Kind::error},
        MessageRow{"AnotherCommandAtWork",
                   "waiting for lock on working directory of /w held by process '9' on host 'h'\n"
                   "abort: working directory of /w: timed out waiting for lock held by 'h:9'\n",
                   Kind::error},
        MessageRow{"SharedRepositoryIsAhead",
                   "abort: push creates new remote head 39056c55693c\n"
                   "(pull and merge or see 'hg help push' for details about pushing new heads)\n",
                   Kind::error},
        MessageRow{"NoSharedRepository", "abort: error: Connection refused\n", Kind::error},
        MessageRow{"ChangedAndWritable",
                   "error: a.ocl has changes that are not checked in; undo its check out to lose them\n",
                   Kind::error},
        MessageRow{"UnknownCommand", "hg: unknown command 'nosuch'\n", Kind::error},
        MessageRow{"NotThere", "env: ‘hg’: No such file or directory\n", Kind::error},
        MessageRow{"NotThereForTheShell", "sh: 1: hg: not found\n", Kind::error},
        MessageRow{"Killed", "error: the command was ended by signal 9 (Killed)\n", Kind::error},
        MessageRow{"WaitedForAnotherCommand",
                   "waiting for lock on working directory of /w held by process '9' on host 'h'\n"
                   "got lock after 1 seconds\n",
                   Kind::nothing},
        MessageRow{"AlreadyThere", "a.ocl already tracked!\n", Kind::warning},
        MessageRow{"ABrokenExtension", "*** failed to import extension \"nosuch\": No module named 'nosuch'\n",
                   Kind::warning},
        MessageRow{"Unchanged", "-a b.ocl is unchanged: nothing to check in\n", Kind::warning},
        MessageRow{"NothingChanged", "nothing changed\n", Kind::warning},
        MessageRow{"NoChangesNeeded", "no changes needed to a.ocl\n", Kind::nothing},
        MessageRow{"Connected", "Repository: /home/anna/Püm pe\n", Kind::nothing},
        MessageRow{"AHistoryThatSpeaksOfErrors",
                   "6ecf4adbbf32  2026-11-21 11:48:59 +0000  anna\n    abort: no more of it\n    error: mended\n",
                   Kind::nothing},
        MessageRow{"AFileThatSpeaksOfErrors", "abort/error.ocl\t6ecf4adbbf32\n", Kind::nothing}),
    [](const auto &row) { return row.param.name; });

TEST(MercurialListing, GivesFilesAndTheChangesetsThatChangedThemLast) {
    EXPECT_THAT(mercurial.list("-a b.ocl\ta9720199c12a\nsub/ö (1).ocl\tb292a0d9c87e\n"),
                ElementsAre(Listed{"-a b.ocl", "a9720199c12a", "?", ""},
                            Listed{"sub/ö (1).ocl", "b292a0d9c87e", "?", ""}));
}

TEST(MercurialListing, KeepsAFileWhoseChangesetIsNotTold) {
    EXPECT_THAT(mercurial.list("a.ocl\t\n"), ElementsAre(Listed{"a.ocl", "", "?", ""}));
}

TEST(MercurialListing, LeavesMercurialsOwnFilesOut) {
    EXPECT_THAT(mercurial.list(".hgtags\ta9720199c12a\nsub/.hgignore\ta9720199c12a\nsub/a.hg.ocl\ta9720199c12a\n"),
                ElementsAre(Listed{"sub/a.hg.ocl", "a9720199c12a", "?", ""}));
}

TEST(MercurialListing, OfAnEmptyRepositoryIsEmpty) { EXPECT_THAT(mercurial.list(""), IsEmpty()); }

TEST(MercurialHeader, TellsTheVersionAsTheListingDoes) {
    EXPECT_EQ(mercurial.find("HeaderItsVersion", "$Revision: a9720199c12a $\n"), "a9720199c12a");
}

TEST(MercurialHeader, TellsNothingBeforeTheFirstCheckIn) {
    EXPECT_EQ(mercurial.find("HeaderItsVersion", "$Revision$\n"), "");
    EXPECT_EQ(mercurial.value("HeaderItsLocker"), "");
}

} // namespace
