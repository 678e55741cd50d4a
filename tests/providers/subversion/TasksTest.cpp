// Tasks, which are changelists.
#include "tests/providers/subversion/Project.h"

#include <filesystem>

using namespace provider_test;

namespace {

class Tasks : public ProjectTest {
  protected:
    static long set(const Host &host, std::string task) {
        return SCC_ENTRY(SccSetTask)(host.context(), task.data());
    }
    static long show(const Host &host, std::string task) {
        return SCC_ENTRY(SccShowTask)(host.context(), task.data());
    }
    static long checkIn(const Host &host, std::string comment) {
        return SCC_ENTRY(SccCheckinTask)(host.context(), comment.data());
    }
    static std::string current(const Host &host) {
        std::array<char, SCC_TASK_SIZE> task{};
        EXPECT_EQ(SCC_OK, SCC_ENTRY(SccGetDefaultTask)(host.context(), task.data()));
        return task.data();
    }
    static std::string listFile(const Host &host) {
        std::array<char, SCC_TASKFILE_SIZE> file{};
        EXPECT_EQ(SCC_OK, SCC_ENTRY(SccListTasks)(host.context(), file.data()));
        return file.data();
    }
    static std::string list(const Host &host) {
        return shell("iconv -f UTF-16LE -t UTF-8 " + inQuotes(listFile(host)));
    }
};

TEST_F(Tasks, ACurrentTaskTakesWhatIsCheckedOut) {
    EXPECT_EQ(SCC_OK, alice.checkOut({valve}));
    EXPECT_EQ(SCC_OK, set(alice, "Größere Pumpe"));
    EXPECT_EQ("Größere Pumpe", current(alice));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_NE(std::string::npos,
              svn("status " + inQuotes(at("alice"))).find("--- Changelist 'Größere Pumpe':\n     K  " + pump));
    EXPECT_EQ("Größere Pumpe\t1 file", list(alice));
}

TEST_F(Tasks, TheCurrentTaskIsRememberedForEachWorkingCopy) {
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    EXPECT_EQ("", current(bob));
    EXPECT_EQ(SCC_OK, alice.close());
    EXPECT_EQ(SCC_OK, alice.open(url("station"), at("alice")));
    EXPECT_EQ("A", current(alice));
    EXPECT_EQ(SCC_OK, set(alice, ""));
    EXPECT_EQ("", current(alice));
    EXPECT_EQ("", svnStatus(at("alice")));
}

TEST_F(Tasks, CheckingATaskInCommitsItsFilesOnlyAndEndsIt) {
    EXPECT_EQ(SCC_OK, alice.checkOut({valve}));
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    const std::string tank = write("alice/Tank.oru", "tank\n");
    EXPECT_EQ(SCC_OK, alice.add({tank}));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, tank}));
    write("alice/Pump.oru", "pump 2\n");
    write("alice/Valve.oru", "valve 2\n");
    EXPECT_EQ(SCC_OK, checkIn(alice, "the whole task")) << Host::text();
    EXPECT_EQ("pump 2", stored("station/Pump.oru"));
    EXPECT_EQ("valve 1", stored("station/Valve.oru"));
    EXPECT_EQ("the whole task", shell("svnlook log " + inQuotes(at("repository"))));
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
    EXPECT_EQ("", lockOwner("station/Tank.oru")) << "unchanged";
    EXPECT_EQ("alice", lockOwner("station/Valve.oru"));
    EXPECT_EQ("", current(alice));
    EXPECT_EQ("", list(alice));
    EXPECT_EQ("M    K  " + valve, svnStatus(at("alice")));
}

TEST_F(Tasks, CheckingInWithoutATaskOrFilesFails) {
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, checkIn(alice, "x"));
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    EXPECT_EQ(SCC_E_OPNOTPERFORMED, checkIn(alice, "x"));
    EXPECT_EQ("A", current(alice));
}

TEST_F(Tasks, CheckingInAMissingFileFailsAndKeepsTheTask) {
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    write("alice/Valve.oru", "valve 2\n");
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_E_FILENOTEXIST, checkIn(alice, "x"));
    EXPECT_EQ("2", newestRevision());
    EXPECT_EQ("A\t2 files", list(alice));
}

TEST_F(Tasks, CreatedOnesHaveTheNextFreeNameAndAreListed) {
    EXPECT_EQ(SCC_OK, set(alice, "task-2"));
    EXPECT_EQ(SCC_OK, SCC_ENTRY(SccCreateTask)(alice.context(), nullptr));
    EXPECT_EQ(SCC_OK, SCC_ENTRY(SccCreateTask)(alice.context(), nullptr));
    EXPECT_TRUE(said("Created the task \"task-3\"")) << Host::text();
    EXPECT_EQ("task-1\tno files\ntask-2\tno files\ntask-3\tno files", list(alice));
    EXPECT_EQ("task-2", current(alice));
}

TEST_F(Tasks, AChangelistOfAnotherProgramIsATask) {
    EXPECT_EQ("", svn("changelist -q 'by hand' " + inQuotes(pump)));
    EXPECT_EQ("by hand\t1 file", list(alice));
    EXPECT_EQ(SCC_OK, show(alice, "by hand"));
    EXPECT_TRUE(said("Task by hand: 1 file\nunchanged  Pump.oru\n")) << Host::text();
    EXPECT_NE(SCC_OK, show(alice, "other"));
    EXPECT_TRUE(said("There is no task \"other\".")) << Host::text();
}

TEST_F(Tasks, GivingACheckOutUpOrCheckingItInLeavesTheTask) {
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    EXPECT_EQ(SCC_OK, alice.undo({pump}));
    EXPECT_EQ(SCC_OK, alice.checkIn({valve}));
    EXPECT_EQ("A\tno files", list(alice));
}

TEST_F(Tasks, TheListIsRemovedWithTheProject) {
    const std::string file = listFile(alice);
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(file, listFile(alice));
    EXPECT_EQ(SCC_OK, alice.close());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Tasks, NamesThatCantBeAreRefused) {
    EXPECT_NE(SCC_OK, set(alice, std::string(SCC_TASK_SIZE, 'x')));
    EXPECT_NE(SCC_OK, set(alice, "two\nlines"));
    EXPECT_NE(SCC_OK, set(alice, "gr\xFC\xDF"));
    EXPECT_EQ("", current(alice));
    EXPECT_EQ(SCC_OK, set(alice, std::string(SCC_TASK_SIZE - 1, 'x')));
    EXPECT_EQ(std::string(SCC_TASK_SIZE - 1, 'x'), current(alice));
}

TEST_F(Tasks, ARenamedFileStaysInItsTask) {
    EXPECT_EQ(SCC_OK, set(alice, "A"));
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    std::filesystem::rename(pump, at("alice/Impeller.oru"));
    EXPECT_EQ(SCC_OK, alice.rename(pump, at("alice/Impeller.oru")));
    Host::forgetText();
    EXPECT_EQ(SCC_OK, show(alice, "A"));
    EXPECT_TRUE(said("Impeller.oru")) << Host::text();
}

} // namespace
