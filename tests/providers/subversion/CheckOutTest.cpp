// Check out, undo and get.
#include "tests/providers/subversion/Project.h"

#include <filesystem>

using namespace provider_test;

namespace {

class CheckOut : public ProjectTest {};
class Undo : public ProjectTest {};
class Get : public ProjectTest {};

constexpr long outHere =
    SCC_STATUS_CONTROLLED | SCC_STATUS_CHECKEDOUT | SCC_STATUS_OUTBYUSER | SCC_STATUS_OUTEXCLUSIVE;
constexpr long outOther = SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOTHER | SCC_STATUS_OUTEXCLUSIVE;

TEST_F(CheckOut, LocksTheFileWithTheCommentAndMakesItWritable) {
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}, "for the impeller"));
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
    EXPECT_NE(std::string::npos, svn("info " + inQuotes(url("station/Pump.oru"))).find("for the impeller"));
    EXPECT_EQ(outHere, alice.status(pump));
    EXPECT_EQ(outOther, bob.status(bobsPump));
}

TEST_F(CheckOut, GetsTheNewestVersionFirst) {
    bobChanges("Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(CheckOut, KeepsWhatWasChangedBesideTheFile) {
    bobChanges("Pump.oru", "pump 2\n");
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
    EXPECT_EQ("my pump\n", support::contentsOf(pump + ".changed"));
    EXPECT_TRUE(said("your changes are kept in Pump.oru.changed")) << Host::text();
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(CheckOut, KeepsASecondChangeUnderAnotherName) {
    write("alice/Pump.oru.changed", "kept before\n");
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ("kept before\n", support::contentsOf(pump + ".changed"));
    EXPECT_EQ("my pump\n", support::contentsOf(pump + ".2.changed"));
}

TEST_F(CheckOut, OfAFileThatAnotherUserHasNamesHolderAndTime) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsPump}, "mine"));
    const std::string day = shell("date +%Y-%m-%d");
    EXPECT_EQ(SCC_E_FILEISLOCKED, alice.checkOut({pump, valve}));
    EXPECT_TRUE(said(pump + ": checked out by bob since " + day)) << Host::text();
    EXPECT_TRUE(said("(mine)"));
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ("bob", lockOwner("station/Pump.oru"));
    EXPECT_EQ("alice", lockOwner("station/Valve.oru")) << "the other file is checked out";
}

TEST_F(CheckOut, OfAFileThatIsOutAlreadyIsRefusedAndChangesNothing) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_E_ALREADYCHECKEDOUT, alice.checkOut({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ(outHere | SCC_STATUS_MODIFIED, alice.status(pump));
}

TEST_F(CheckOut, InAnotherWorkingCopyOfTheSameUserIsShownAsTheUsers) {
    Host again("alice");
    again.connect("station", at("alice-2"));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTBYUSER | SCC_STATUS_OUTEXCLUSIVE,
              again.status(at("alice-2/Pump.oru")));
    EXPECT_EQ(SCC_E_ALREADYCHECKEDOUT, again.checkOut({at("alice-2/Pump.oru")}));
}

TEST_F(CheckOut, RestoresAMissingFile) {
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    EXPECT_TRUE(isWritable(pump));
}

TEST_F(CheckOut, BringsAFileThatIsNotInTheWorkingCopyYet) {
    const std::string tank = write("bob/Tank.oru", "tank\n");
    EXPECT_EQ(SCC_OK, bob.add({tank}));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE, alice.status(at("alice/Tank.oru")));
    EXPECT_EQ(SCC_OK, alice.checkOut({at("alice/Tank.oru")})) << Host::text();
    EXPECT_EQ("tank\n", support::contentsOf(at("alice/Tank.oru")));
    EXPECT_EQ(outHere, alice.status(at("alice/Tank.oru")));
}

TEST_F(CheckOut, OfUnknownFilesIsRefusedEach) {
    const std::string stray = write("alice/stray.txt", "x");
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.checkOut({stray, at("elsewhere/Pump.oru"), pump}));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
    EXPECT_EQ("x", support::contentsOf(stray));
}

TEST_F(CheckOut, OfNoFilesIsASuccess) { EXPECT_EQ(SCC_OK, alice.checkOut({})); }

TEST_F(CheckOut, TakesEitherSeparator) {
    EXPECT_EQ(SCC_OK, alice.checkOut({at("alice") + "\\Pump.oru"}));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(Undo, RestoresTheFileAndReleasesTheLock) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_OK, alice.undo({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(pump));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Undo, OfAFileThatIsNotCheckedOutIsRefused) {
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_E_NOTCHECKEDOUT, alice.undo({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.undo({write("alice/stray.txt", "x")}));
}

TEST_F(Undo, OfAStolenLockRestoresTheFileAndLeavesTheThiefAlone) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ("", svn("lock -q --username bob --force " + inQuotes(bobsPump)));
    EXPECT_EQ(SCC_OK, alice.undo({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    EXPECT_EQ("bob", lockOwner("station/Pump.oru"));
    EXPECT_EQ(outOther, alice.status(pump));
    EXPECT_EQ("", svnStatus(at("alice"))) << "the working copy has forgotten its lock";
}

TEST_F(Undo, RestoresAMissingFile) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_OK, alice.undo({pump})) << Host::text();
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
}

TEST_F(Get, BringsTheNewestVersionReadOnly) {
    bobChanges("Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.get({pump}));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
}

TEST_F(Get, MakesAFileReadOnlyThatHasNoProperties) {
    EXPECT_EQ("", svn("propdel -q svn:needs-lock " + inQuotes(pump)));
    EXPECT_EQ("", svn("commit -q -m x " + inQuotes(at("alice"))));
    write("alice/Pump.oru", "pump 1\n");
    EXPECT_EQ(SCC_OK, alice.get({pump}));
    EXPECT_FALSE(isWritable(pump));
}

TEST_F(Get, KeepsWhatWasChangedBesideTheFile) {
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_OK, alice.get({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    EXPECT_EQ("my pump\n", support::contentsOf(pump + ".changed"));
}

TEST_F(Get, LeavesAFileThatIsCheckedOutAlone) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_E_FILEISCHECKEDOUT, alice.get({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
}

TEST_F(Get, BringsAFileThatIsCheckedOutAndWasMovedAside) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    std::filesystem::rename(pump, at("alice/Pump_temp.oru"));
    EXPECT_EQ(SCC_OK, alice.get({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    std::filesystem::rename(at("alice/Pump_temp.oru"), pump);
    EXPECT_EQ(outHere | SCC_STATUS_MODIFIED, alice.status(pump));
}

TEST_F(Get, OfDirectoriesTakesTheFilesInThem) {
    EXPECT_EQ(SCC_OK, bob.add({write("bob/parts/Seal.oru", "seal\n")}));
    bobChanges("Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.get({at("alice")}, SCC_GET_ALL));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
    EXPECT_FALSE(std::filesystem::exists(at("alice/parts/Seal.oru")));
    EXPECT_EQ(SCC_OK, alice.get({at("alice")}, SCC_GET_ALL | SCC_GET_RECURSIVE));
    EXPECT_EQ("seal\n", support::contentsOf(at("alice/parts/Seal.oru")));
}

TEST_F(Get, OfAFileThatWasDeletedInTheRepositoryLeavesTheLocalOne) {
    EXPECT_EQ(SCC_OK, bob.remove({bobsPump}));
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.get({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
}

} // namespace
