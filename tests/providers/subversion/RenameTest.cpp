// Renaming and moving.
#include "tests/providers/subversion/Project.h"

#include <filesystem>

using namespace provider_test;

namespace {

class Rename : public ProjectTest {
  protected:
    /// "svn log" of a file, the revisions only.
    [[nodiscard]] std::string revisions(const std::string &path) const {
        return svn("log -q " + inQuotes(url(path) + "@") + " | grep -o '^r[0-9]*' | tr '\\n' ' '");
    }
};

TEST_F(Rename, LeavesTheLocalFileToTheHostAndKeepsTheHistory) {
    const std::string impeller = at("alice/Impeller.oru");
    EXPECT_EQ(SCC_OK, alice.rename(pump, impeller)) << Host::text();
    EXPECT_TRUE(std::filesystem::exists(pump));
    EXPECT_FALSE(std::filesystem::exists(impeller));
    std::filesystem::rename(pump, impeller);
    EXPECT_EQ("Impeller.oru\nValve.oru", svn("list " + url("station")));
    EXPECT_EQ("r3 r2 ", revisions("station/Impeller.oru"));
    EXPECT_EQ("", svnStatus(at("alice")));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(impeller));
}

TEST_F(Rename, FollowsAHostThatHasRenamedTheFile) {
    const std::string impeller = at("alice/Impeller.oru");
    std::filesystem::rename(pump, impeller);
    EXPECT_EQ(SCC_OK, alice.rename(pump, impeller)) << Host::text();
    EXPECT_FALSE(std::filesystem::exists(pump));
    EXPECT_EQ("pump 1\n", support::contentsOf(impeller));
    EXPECT_EQ("r3 r2 ", revisions("station/Impeller.oru"));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Rename, ToANewDirectoryIsAMoveInOneRevision) {
    const std::string moved = at("alice/parts/small/Pump.oru");
    std::filesystem::create_directories(at("alice/parts/small"));
    std::filesystem::rename(pump, moved);
    EXPECT_EQ(SCC_OK, alice.rename(pump, moved)) << Host::text();
    EXPECT_EQ("3", newestRevision());
    EXPECT_EQ("r3 r2 ", revisions("station/parts/small/Pump.oru"));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Rename, OfACheckedOutFileKeepsLockAndChangesUnderTheNewName) {
    const std::string impeller = at("alice/Impeller.oru");
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}, "for the seal"));
    write("alice/Pump.oru", "half done\n");
    std::filesystem::rename(pump, impeller);
    EXPECT_EQ(SCC_OK, alice.rename(pump, impeller)) << Host::text();
    EXPECT_EQ("half done\n", support::contentsOf(impeller));
    EXPECT_EQ("pump 1", stored("station/Impeller.oru"));
    EXPECT_EQ("alice", lockOwner("station/Impeller.oru"));
    EXPECT_NE(std::string::npos, svn("info " + inQuotes(url("station/Impeller.oru"))).find("for the seal"));
    EXPECT_TRUE(isWritable(impeller));
    EXPECT_FALSE(std::filesystem::exists(at("alice/Pump.oru.changed")));
    EXPECT_EQ(SCC_OK, alice.checkIn({impeller}));
    EXPECT_EQ("half done", stored("station/Impeller.oru"));
}

TEST_F(Rename, OfACheckedOutFileThatTheHostHasNotRenamedKeepsItsChanges) {
    const std::string impeller = at("alice/Impeller.oru");
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "half done\n");
    EXPECT_EQ(SCC_OK, alice.rename(pump, impeller)) << Host::text();
    EXPECT_EQ("half done\n", support::contentsOf(pump));
    std::filesystem::rename(pump, impeller);
    EXPECT_EQ("alice", lockOwner("station/Impeller.oru"));
    EXPECT_EQ(SCC_STATUS_MODIFIED | SCC_STATUS_CHECKEDOUT,
              alice.status(impeller) & (SCC_STATUS_MODIFIED | SCC_STATUS_CHECKEDOUT));
}

TEST_F(Rename, OfADirectoryMovesAllThatIsInIt) {
    const std::string seal = write("alice/parts/Seal.oru", "seal\n");
    const std::string ring = write("alice/parts/Ring.oru", "ring\n");
    EXPECT_EQ(SCC_OK, alice.add({seal, ring}));
    EXPECT_EQ(SCC_OK, alice.checkOut({seal}));
    write("alice/parts/Seal.oru", "half done\n");
    write("alice/parts/notes.txt", "mine\n");
    EXPECT_EQ(SCC_OK, alice.rename(at("alice/parts"), at("alice/pieces"))) << Host::text();
    EXPECT_EQ("Ring.oru\nSeal.oru", svn("list " + url("station/pieces")));
    EXPECT_FALSE(std::filesystem::exists(at("alice/parts")));
    EXPECT_EQ("half done\n", support::contentsOf(at("alice/pieces/Seal.oru")));
    EXPECT_EQ("mine\n", support::contentsOf(at("alice/pieces/notes.txt")));
    EXPECT_EQ("alice", lockOwner("station/pieces/Seal.oru"));
    EXPECT_EQ("seal", stored("station/pieces/Seal.oru"));
    EXPECT_EQ("?       " + at("alice/pieces/notes.txt") + "\nM    K  " + at("alice/pieces/Seal.oru"),
              svn("status " + inQuotes(at("alice")) + " | sort"));
}

TEST_F(Rename, OfADirectoryFollowsAHostThatHasRenamedIt) {
    EXPECT_EQ(SCC_OK, alice.add({write("alice/parts/Seal.oru", "seal\n")}));
    std::filesystem::rename(at("alice/parts"), at("alice/pieces"));
    EXPECT_EQ(SCC_OK, alice.rename(at("alice/parts"), at("alice/pieces"))) << Host::text();
    EXPECT_EQ("Seal.oru", svn("list " + url("station/pieces")));
    EXPECT_EQ("", svnStatus(at("alice")));
    EXPECT_EQ(SCC_OK, alice.rename(at("alice/pieces/Seal.oru"), at("alice/pieces/Ring.oru"))) << Host::text();
    EXPECT_EQ("Ring.oru", svn("list " + url("station/pieces")));
}

TEST_F(Rename, OfAFileThatAnotherUserHasChangesNothing) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsPump}));
    const std::string impeller = at("alice/Impeller.oru");
    std::filesystem::rename(pump, impeller);
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, alice.rename(pump, impeller));
    EXPECT_TRUE(said("checked out by bob")) << Host::text();
    EXPECT_EQ("pump 1\n", support::contentsOf(impeller));
    EXPECT_FALSE(std::filesystem::exists(pump));
    EXPECT_EQ("2", newestRevision());
}

TEST_F(Rename, ThatTheRepositoryRefusesRestoresEverything) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "half done\n");
    write("repository/hooks/pre-commit", "#!/bin/sh\nexit 1\n");
    EXPECT_EQ("", shell("chmod +x " + inQuotes(at("repository/hooks/pre-commit"))));
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, alice.rename(pump, at("alice/parts/Pump.oru")));
    EXPECT_EQ("half done\n", support::contentsOf(pump));
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ("M    K  " + pump, svn("status -q " + inQuotes(at("alice"))));
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(Rename, OfADirectoryThatTheRepositoryRefusesRestoresEverything) {
    EXPECT_EQ(SCC_OK, alice.add({write("alice/parts/Seal.oru", "seal\n")}));
    write("alice/parts/notes.txt", "mine\n");
    EXPECT_EQ(SCC_OK, alice.checkOut({at("alice/parts/Seal.oru")}));
    write("alice/parts/Seal.oru", "half done\n");
    write("repository/hooks/pre-commit", "#!/bin/sh\nexit 1\n");
    EXPECT_EQ("", shell("chmod +x " + inQuotes(at("repository/hooks/pre-commit"))));
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, alice.rename(at("alice/parts"), at("alice/pieces")));
    EXPECT_EQ("half done\n", support::contentsOf(at("alice/parts/Seal.oru")));
    EXPECT_EQ("mine\n", support::contentsOf(at("alice/parts/notes.txt")));
    EXPECT_FALSE(std::filesystem::exists(at("alice/pieces")));
    EXPECT_EQ("M    K  " + at("alice/parts/Seal.oru"), svn("status -q " + inQuotes(at("alice"))));
}

TEST_F(Rename, OntoAFileThatExistsIsRefused) {
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, alice.rename(pump, valve));
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, alice.rename(pump, write("alice/stray.oru", "mine\n")));
    EXPECT_EQ("mine\n", support::contentsOf(at("alice/stray.oru")));
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.rename(at("alice/stray.oru"), at("alice/other.oru")));
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, alice.rename(pump, at("elsewhere/Pump.oru")));
    EXPECT_EQ("2", newestRevision());
}

TEST_F(Rename, OfAMissingFileRestoresItUnderTheNewName) {
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_OK, alice.rename(pump, at("alice/Impeller.oru"))) << Host::text();
    EXPECT_EQ("pump 1\n", support::contentsOf(at("alice/Impeller.oru")));
    EXPECT_EQ("", svnStatus(at("alice")));
}

} // namespace
