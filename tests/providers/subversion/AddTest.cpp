// Adding and removing.
#include "tests/providers/subversion/Project.h"

#include <sys/stat.h>

#include <filesystem>

using namespace provider_test;
using namespace std::string_literals;

namespace {

class Add : public ProjectTest {};
class Remove : public ProjectTest {};

TEST_F(Add, CommitsAtOnceWithNeedsLockAndKeywords) {
    const std::string tank = write("alice/Tank.oru", "tank $Revision$\n");
    EXPECT_EQ(SCC_OK, alice.add({tank}, "A tank"));
    EXPECT_EQ("tank $Revision: 3 $\n", support::contentsOf(tank));
    EXPECT_FALSE(isWritable(tank));
    EXPECT_EQ("*", svn("propget svn:needs-lock " + inQuotes(tank)));
    EXPECT_EQ("Author Date Id Revision", svn("propget svn:keywords " + inQuotes(tank)));
    EXPECT_EQ("A tank", shell("svnlook log " + inQuotes(at("repository"))));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(tank));
}

TEST_F(Add, OfSeveralFilesIsOneRevisionWithTheirDirectories) {
    const std::string seal = write("alice/parts/small/Seal.oru", "seal\n");
    const std::string ring = write("alice/parts/Ring.oru", "ring\n");
    EXPECT_EQ(SCC_OK, alice.add({seal, ring})) << Host::text();
    EXPECT_EQ("3", newestRevision());
    EXPECT_EQ("parts/\nparts/Ring.oru\nparts/small/\nparts/small/Seal.oru\nPump.oru\nValve.oru",
              svn("list -R " + url("station") + " | LC_ALL=en_US.UTF-8 sort -f"));
}

TEST_F(Add, OfADirectoryCounts) {
    std::filesystem::create_directory(at("alice/parts"));
    EXPECT_EQ(SCC_OK, alice.add({at("alice/parts/")})) << Host::text();
    EXPECT_EQ("parts/\nPump.oru\nValve.oru", svn("list " + url("station") + " | LC_ALL=en_US.UTF-8 sort -f"));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(at("alice/parts")));
    EXPECT_EQ(SCC_E_FILEALREADYEXISTS, alice.add({at("alice/parts/")}));
}

TEST_F(Add, LeavesABinaryFileWithoutKeywords) {
    const std::string image = write("alice/Plan.png", "\x89PNG\0\1\2\xFF\xFE\0\0\0\0 $Revision$"s);
    EXPECT_EQ(SCC_OK, alice.add({image}));
    EXPECT_NE("Author Date Id Revision", svn("propget svn:keywords " + inQuotes(image)));
    EXPECT_EQ("*", svn("propget svn:needs-lock " + inQuotes(image)));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_NOMERGE, alice.status(image));
}

TEST_F(Add, TakesTheTypeThatTheHostSays) {
    const std::string one = write("alice/One.dat", "text $Revision$\n");
    const std::string two = write("alice/Two.dat", "\0\1\2\3\xFF $Revision$\n"s);
    EXPECT_EQ(SCC_OK, alice.add({one, two}, "x", {SCC_FILETYPE_BINARY, SCC_FILETYPE_TEXT})) << Host::text();
    EXPECT_EQ("text $Revision$\n", support::contentsOf(one));
    EXPECT_EQ(SCC_STATUS_NOMERGE, alice.status(one) & SCC_STATUS_NOMERGE);
    EXPECT_EQ("Author Date Id Revision", svn("propget svn:keywords " + inQuotes(two)));
    EXPECT_EQ(0, alice.status(two) & SCC_STATUS_NOMERGE);
}

TEST_F(Add, WithTheKeepFlagLeavesTheFileCheckedOut) {
    const std::string tank = write("alice/Tank.oru", "tank\n");
    EXPECT_EQ(SCC_OK, alice.add({tank}, "x", {SCC_KEEP_CHECKEDOUT}));
    EXPECT_EQ("alice", lockOwner("station/Tank.oru"));
    EXPECT_TRUE(isWritable(tank));
}

TEST_F(Add, OfOneFileThatCantBeAddsNothing) {
    const std::string tank = write("alice/Tank.oru", "tank\n");
    EXPECT_EQ(SCC_E_FILEALREADYEXISTS, alice.add({tank, pump}));
    EXPECT_EQ(SCC_E_FILENOTEXIST, alice.add({tank, at("alice/Missing.oru")}));
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, alice.add({tank, write("elsewhere/Tank.oru", "x")}));
    ::mkfifo(at("alice/pipe").c_str(), 0600);
    EXPECT_EQ(SCC_E_TYPENOTSUPPORTED, alice.add({tank, at("alice/pipe")}));
    EXPECT_TRUE(said("Nothing was added."));
    EXPECT_EQ("2", newestRevision());
    EXPECT_EQ("?       " + tank + "\n?       " + at("alice/pipe"), svnStatus(at("alice")));
}

TEST_F(Add, OfAFileThatSomebodyElseHasAddedLeavesTheLocalOne) {
    EXPECT_EQ(SCC_OK, bob.add({write("bob/Tank.oru", "bob's\n")}));
    const std::string tank = write("alice/Tank.oru", "alice's\n");
    EXPECT_EQ(SCC_E_FILEALREADYEXISTS, alice.add({tank}));
    EXPECT_EQ("alice's\n", support::contentsOf(tank));
}

TEST_F(Add, ThatTheRepositoryRefusesLeavesTheFilesUnversioned) {
    write("repository/hooks/pre-commit", "#!/bin/sh\nexit 1\n");
    EXPECT_EQ("", shell("chmod +x " + inQuotes(at("repository/hooks/pre-commit"))));
    const std::string seal = write("alice/parts/Seal.oru", "seal\n");
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, alice.add({seal}));
    EXPECT_EQ("seal\n", support::contentsOf(seal));
    EXPECT_EQ("?       " + at("alice/parts"), svnStatus(at("alice")));
}

TEST_F(Add, TakesNamesThatHurt) {
    const std::string longName(200, 'x');
    Names files;
    for (const std::string &name :
         {std::string("with blank.oru"), std::string("Prüfstand.oru"), std::string("a@b.oru"),
          std::string("@.oru"), std::string("-m.oru"), std::string("$HOME'`\".oru"), std::string("ポンプ.oru"),
          std::string("50%25.oru"), longName + "/" + longName + "/" + longName + ".oru"}) {
        files.push_back(write("alice/" + name, name + "\n"));
    }
    EXPECT_EQ(SCC_OK, alice.add(files)) << Host::text();
    EXPECT_EQ(SCC_OK, alice.checkOut(files)) << Host::text();
    for (const std::string &file : files) {
        EXPECT_EQ("", shell("printf 'more\\n' >> " + inQuotes(file)));
    }
    EXPECT_EQ(SCC_OK, alice.checkIn(files)) << Host::text();
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, alice.query(files, status));
    EXPECT_EQ(std::vector<long>(files.size(), SCC_STATUS_CONTROLLED), status);
    EXPECT_EQ("a@b.oru\nmore", stored("station/a@b.oru"));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Add, RefusesANameThatIsNotUtf8) {
    const std::string file = write("alice/b\xFCgel.oru", "x");
    EXPECT_EQ(SCC_E_FILESYNTAXERR, alice.add({file}));
    EXPECT_TRUE(said("b\\xfcgel.oru")) << Host::text();
}

TEST_F(Remove, CommitsAtOnceAndLeavesTheLocalFile) {
    EXPECT_EQ(SCC_OK, alice.remove({pump, valve}, "Not needed")) << Host::text();
    EXPECT_EQ("", svn("list " + url("station")));
    EXPECT_EQ("3", newestRevision());
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ(SCC_STATUS_NOTCONTROLLED, alice.status(pump));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE | SCC_STATUS_DELETED, bob.status(bobsPump));
}

TEST_F(Remove, OfAFileThatAnotherUserHasIsRefused) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsPump}));
    EXPECT_EQ(SCC_E_FILEISCHECKEDOUT, alice.remove({valve, pump}));
    EXPECT_TRUE(said("checked out by bob")) << Host::text();
    EXPECT_EQ("Pump.oru\nValve.oru", svn("list " + url("station")));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Remove, OfAFileThatIsCheckedOutKeepsItsChanges) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_OK, alice.remove({pump})) << Host::text();
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ("Valve.oru", svn("list " + url("station")));
}

TEST_F(Remove, OfADirectoryRemovesWhatIsInIt) {
    const std::string seal = write("alice/parts/Seal.oru", "seal\n");
    EXPECT_EQ(SCC_OK, alice.add({seal}));
    EXPECT_EQ(SCC_OK, alice.checkOut({seal}));
    write("alice/parts/Seal.oru", "seal 2\n");
    EXPECT_EQ(SCC_OK, alice.checkIn({seal}));
    EXPECT_EQ(SCC_OK, alice.remove({at("alice/parts")})) << Host::text();
    EXPECT_EQ("Pump.oru\nValve.oru", svn("list " + url("station")));
    EXPECT_EQ("seal 2\n", support::contentsOf(seal));
}

TEST_F(Remove, OfMissingFilesWorks) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    std::filesystem::remove(pump);
    std::filesystem::remove(valve);
    EXPECT_EQ(SCC_OK, alice.remove({pump, valve})) << Host::text();
    EXPECT_EQ("", svn("list " + url("station")));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Remove, ThatTheRepositoryRefusesChangesNothing) {
    write("repository/hooks/pre-commit", "#!/bin/sh\nexit 1\n");
    EXPECT_EQ("", shell("chmod +x " + inQuotes(at("repository/hooks/pre-commit"))));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, alice.remove({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ(SCC_STATUS_CHECKEDOUT, alice.status(pump) & SCC_STATUS_CHECKEDOUT);
}

TEST_F(Remove, OfAnUnknownFileIsRefused) {
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.remove({write("alice/stray.txt", "x")}));
}

} // namespace
