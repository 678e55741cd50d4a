// Tests the property set of Git on the output of Git.
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

const ToolSet git("Git");

class GitMessage : public testing::TestWithParam<MessageRow> {};

TEST_P(GitMessage, IsTakenForWhatItIs) { EXPECT_EQ(git.kindOf(GetParam().text), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(
    Rows, GitMessage,
    testing::Values(
        MessageRow{"NoRepository", "fatal: not a git repository (or any of the parent directories): .git\n",
                   Kind::error},
        MessageRow{"NotKnown", "error: pathspec '/w/a b.ocl' did not match any file(s) known to git\n",
                   Kind::error},
        MessageRow{"NoLabel", "fatal: could not resolve nope\n", Kind::error},
        MessageRow{"TakenLabel", "fatal: tag 'v1' already exists\n", Kind::error},
        MessageRow{"NothingCommittedYet", "fatal: Not a valid object name HEAD\n", Kind::error},
        MessageRow{"NoIdentity",
                   "Author identity unknown\n\n*** Please tell me who you are.\n\n"
                   "fatal: no email was given and auto-detection is disabled\n",
                   Kind::error},
        MessageRow{"AnotherCommandAtWork",
                   "fatal: Unable to create '/w/.git/index.lock': File exists.\n\n"
                   "Another git process seems to be running in this repository, e.g.\n",
                   Kind::error},
        MessageRow{"SharedRepositoryIsAhead",
                   "To /srv/shared\n ! [rejected]        HEAD -> master (fetch first)\n"
                   "error: failed to push some refs to '/srv/shared'\n",
                   Kind::error},
        MessageRow{"RefusedByAHook", " ! [remote rejected] HEAD -> master (pre-receive hook declined)\n",
                   Kind::error},
        MessageRow{"ChangedAndWritable",
                   "error: a.ocl has changes that are not checked in; undo its check out to lose them\n",
                   Kind::error},
        MessageRow{"NotThere", "env: ‘git’: No such file or directory\n", Kind::error},
        MessageRow{"NotThereInGerman", "env: „git“: Datei oder Verzeichnis nicht gefunden\n", Kind::error},
        MessageRow{"NotThereForTheShell", "sh: 1: git: not found\n", Kind::error},
        MessageRow{"NoPermission", "chmod: changing permissions of '/w/a.ocl': Operation not permitted\n",
                   Kind::error},
        MessageRow{"Killed", "error: the command was ended by signal 9 (Killed)\n", Kind::error},
        MessageRow{
            "AWarning",
            "warning: in the working copy of 'a', CRLF will be replaced by LF the next time Git touches it\n",
            Kind::warning},
        MessageRow{"Unchanged", "-a b.ocl is unchanged: nothing to check in\n", Kind::warning},
        MessageRow{"NothingToCommit", "On branch master\nnothing to commit, working tree clean\n", Kind::warning},
        MessageRow{"OnlyOthersAreChanged",
                   "On branch master\nno changes added to commit (use \"git add\" and/or \"git commit -a\")\n",
                   Kind::warning},
        MessageRow{"Connected", "Repository: /home/anna/Püm pe\n", Kind::nothing},
        MessageRow{"AHistoryThatSpeaksOfErrors",
                   "6d1e6e3a58  2026-11-21 11:48:22 +0000  anna\n    error: no more of it\n    fatal: mended\n",
                   Kind::nothing},
        MessageRow{"AFileThatSpeaksOfErrors",
                   "100644 blob 7edcd507510ed88045cd96f8e047b7090d292011\terror: a.ocl\n", Kind::nothing}),
    [](const auto &row) { return row.param.name; });

TEST(GitListing, GivesFilesAndTheVersionsOfTheirContents) {
    EXPECT_THAT(
        git.list("100644 blob 7edcd507510ed88045cd96f8e047b7090d292011\t-a b.ocl\n"
                 "100755 blob 5f37c66f9fd95de1abf8673e64ec8a96082fe870\tsub/ö (1).ocl\n"),
        ElementsAre(Listed{"-a b.ocl", "7edcd50751", "?", ""}, Listed{"sub/ö (1).ocl", "5f37c66f9f", "?", ""}));
}

TEST(GitListing, LeavesGitsOwnFilesOut) {
    EXPECT_THAT(git.list("100644 blob 779cc5ac1be9221100063271b48918c4f6ecdb50\t.gitattributes\n"
                         "100644 blob 779cc5ac1be9221100063271b48918c4f6ecdb50\tsub/.gitignore\n"
                         "100644 blob 7edcd507510ed88045cd96f8e047b7090d292011\tsub/a.gitter.ocl\n"),
                ElementsAre(Listed{"sub/a.gitter.ocl", "7edcd50751", "?", ""}));
}

TEST(GitListing, LeavesOutWhatIsNoFileAndNamesThatGitHadToQuote) {
    EXPECT_THAT(git.list("160000 commit 779cc5ac1be9221100063271b48918c4f6ecdb50\tlibrary.d\n"
                         "100644 blob 7edcd507510ed88045cd96f8e047b7090d292011\t\"a\\tb.ocl\"\n"
                         "fatal: half a lis"),
                IsEmpty());
}

TEST(GitListing, OfAnEmptyRepositoryIsEmpty) { EXPECT_THAT(git.list(""), IsEmpty()); }

TEST(GitHeader, TellsTheVersionAsTheListingDoes) {
    EXPECT_EQ(git.find("HeaderItsVersion", "$Id: 7edcd507510ed88045cd96f8e047b7090d292011 $\n"), "7edcd50751");
}

TEST(GitHeader, TellsNothingBeforeTheFirstCheckIn) {
    EXPECT_EQ(git.find("HeaderItsVersion", "$Id$\n"), "");
    EXPECT_EQ(git.value("HeaderItsLocker"), "");
}

TEST(GitLabels, LeaveOutNothingThatNamesACommit) {
    EXPECT_EQ(git.value("RefusedInLabel").find_first_of("~^@{}/.:-"), std::string::npos);
}

} // namespace
