// Check in.
#include "tests/providers/subversion/Project.h"

#include <filesystem>

using namespace provider_test;

namespace {

class CheckIn : public ProjectTest {};

TEST_F(CheckIn, CommitsAllFilesOfTheCallAsOneRevision) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    write("alice/Pump.oru", "pump 2\n");
    write("alice/Valve.oru", "valve 2\n");
    EXPECT_EQ(SCC_OK, alice.checkIn({pump, valve}, "Larger impeller\r\nand seat")) << Host::text();
    EXPECT_EQ("3", newestRevision());
    EXPECT_EQ("pump 2", stored("station/Pump.oru"));
    EXPECT_EQ("valve 2", stored("station/Valve.oru"));
    EXPECT_EQ("Larger impeller\nand seat", shell("svnlook log " + inQuotes(at("repository"))));
    EXPECT_EQ("alice", shell("svnlook author " + inQuotes(at("repository"))));
}

TEST_F(CheckIn, ReleasesTheLocksAndMakesTheFilesReadOnly) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    write("alice/Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.checkIn({pump, valve}));
    for (const char *name : {"Pump.oru", "Valve.oru"}) {
        EXPECT_EQ("", lockOwner(std::string("station/") + name)) << name;
        EXPECT_FALSE(isWritable(at(std::string("alice/") + name))) << name;
    }
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(pump));
}

TEST_F(CheckIn, OfUnchangedFilesMakesNoRevision) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ(SCC_OK, alice.checkIn({pump}));
    EXPECT_EQ("2", newestRevision());
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
}

TEST_F(CheckIn, WithTheKeepFlagLeavesTheFilesCheckedOut) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    write("alice/Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.checkIn({pump, valve}, "", SCC_KEEP_CHECKEDOUT));
    EXPECT_EQ("pump 2", stored("station/Pump.oru"));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
    EXPECT_EQ("alice", lockOwner("station/Valve.oru"));
    EXPECT_TRUE(isWritable(pump));
}

TEST_F(CheckIn, OfOneFileThatIsNotCheckedOutChecksNothingIn) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "pump 2\n");
    write("alice/Valve.oru", "valve 2\n");
    EXPECT_EQ(SCC_E_NOTCHECKEDOUT, alice.checkIn({pump, valve}));
    EXPECT_TRUE(said("Nothing was checked in.")) << Host::text();
    EXPECT_EQ("2", newestRevision());
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
}

TEST_F(CheckIn, AfterTheLockWasStolenNamesTheThiefAndKeepsTheChanges) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ("", svn("lock -q --username bob --force " + inQuotes(bobsPump)));
    EXPECT_EQ(SCC_E_FILEISLOCKED, alice.checkIn({pump}));
    EXPECT_TRUE(said("your check out was ended, and the file is now checked out by bob since")) << Host::text();
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ("2", newestRevision());
}

TEST_F(CheckIn, AfterTheLockWasBrokenSaysSo) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ("", svn("unlock -q --username bob --force " + inQuotes(url("station/Pump.oru"))));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_MODIFIED, alice.status(pump));
    EXPECT_EQ(SCC_E_NOTCHECKEDOUT, alice.checkIn({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
}

TEST_F(CheckIn, OfAMissingFileIsRefused) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_E_FILENOTEXIST, alice.checkIn({pump}));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(CheckIn, ThatAHookRefusesKeepsFilesAndLocks) {
    write("repository/hooks/pre-commit", "#!/bin/sh\necho 'no commits on Fridays' >&2\nexit 1\n");
    EXPECT_EQ("", shell("chmod +x " + inQuotes(at("repository/hooks/pre-commit"))));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, alice.checkIn({pump}));
    EXPECT_TRUE(said("no commits on Fridays")) << Host::text();
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(CheckIn, TakesACommentThatIsMissingOrNoText) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "pump 2\n");
    std::string name = pump;
    char *names[] = {name.data()};
    EXPECT_EQ(SCC_OK, SCC_ENTRY(SccCheckin)(alice.context(), nullptr, 1, names, nullptr, 0, nullptr));
    EXPECT_EQ("", shell("svnlook log " + inQuotes(at("repository"))));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "pump 3\n");
    EXPECT_EQ(SCC_OK, alice.checkIn({pump}, "gr\xFC\xDF \x01 $HOME `x`"));
    EXPECT_EQ("gr?? ? $HOME `x`", shell("svnlook log " + inQuotes(at("repository"))));
}

} // namespace
