// Ends the process before each system call that changes a directory, in every kind of change, and recovers.
#include "tests/orchard/storage/Workbench.h"

#include "orchard/change/Recovery.h"
#include "orchard/change/UnitChange.h"

#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <functional>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using orchard::FilesBy;
using orchard::Recover;
using orchard::Recovered;
using orchard::UnitChange;

namespace {

constexpr int crashed = 77;
int callsLeft = -1; ///< before the crash; negative: none
int moveFault = 0;  ///< what each move of a file or directory fails with; 0: it works

void countCall() {
    if (callsLeft == 0) {
        ::_exit(crashed);
    }
    callsLeft -= callsLeft > 0 ? 1 : 0;
}

template <class FUNCTION> FUNCTION *next(const char *name) {
    return reinterpret_cast<FUNCTION *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// Take the place of the C library's functions in this program.
extern "C" {
int renameat2(int oldDirectory, const char *from, int newDirectory, const char *to, unsigned flags) {
    countCall();
    if (moveFault != 0) {
        errno = moveFault;
        return -1;
    }
    return next<int(int, const char *, int, const char *, unsigned)>("renameat2")(oldDirectory, from, newDirectory,
                                                                                  to, flags);
}
int rename(const char *from, const char *to) noexcept {
    countCall();
    return next<int(const char *, const char *)>("rename")(from, to);
}
int unlink(const char *path) noexcept {
    countCall();
    return next<int(const char *)>("unlink")(path);
}
int rmdir(const char *path) noexcept {
    countCall();
    return next<int(const char *)>("rmdir")(path);
}
int mkdir(const char *path, mode_t mode) noexcept {
    countCall();
    return next<int(const char *, mode_t)>("mkdir")(path, mode);
}
int mkostemp(char *pattern, int flags) {
    countCall();
    return next<int(char *, int)>("mkostemp")(pattern, flags);
}
}

namespace {

class Crash : public Workbench {
  protected:
    using Change = std::function<void()>;

    [[nodiscard]] std::set<std::string> modelNow() const {
        std::set<std::string> units;
        for (const auto &row : orchard::workspaceUnits(*project)) {
            units.insert(row.path + " " + row.file + " " + orchard::unitStateText(row.state));
        }
        return units;
    }
    [[nodiscard]] std::set<std::string> filesNow() const {
        std::set<std::string> files;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(directory)) {
            const std::string file = std::filesystem::relative(entry.path(), directory).string();
            if (!entry.path().filename().string().starts_with('.')) { // what was written beside a file
                files.insert(file);
            }
        }
        return files;
    }
    void restore() {
        orchard::closeAllProjects();
        std::filesystem::remove_all(directory);
        std::filesystem::copy(original.path(), directory, std::filesystem::copy_options::recursive);
    }
    /// Runs the change in a process that ends before the given call. Returns false if it came to its end.
    bool crashesAt(int call, const Change &change) {
        const pid_t child = ::fork();
        if (child == 0) {
            open();
            callsLeft = call;
            change();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_THAT(WEXITSTATUS(status), testing::AnyOf(0, crashed));
        return WEXITSTATUS(status) == crashed;
    }

    struct End {
        std::set<std::string> model;
        std::set<std::string> files;
        friend bool operator==(const End &, const End &) = default;
    };
    End end() {
        open();
        EXPECT_TRUE(result) << (result.problems.empty() ? "" : result.problems.front().message());
        return result ? End{modelNow(), filesNow()} : End{};
    }

    /// Crashes before each step, with each way to recover, and looks whether all is as before or as wished.
    void sweep(const Change &change) {
        std::filesystem::copy(directory, original.path(), std::filesystem::copy_options::recursive);
        const End before = end();
        restore();
        ASSERT_FALSE(crashesAt(-1, change));
        const End after = end();
        int finished = 0;
        int takenBack = 0;
        for (const Recover how : {Recover::byWhatIsThere, Recover::finish, Recover::undo}) {
            int call = 0;
            for (restore(); crashesAt(call, change); restore(), ++call) {
                SCOPED_TRACE("before call " + std::to_string(call) + ", recovered by " +
                             std::to_string(static_cast<int>(how)));
                const Recovered recovered = orchard::recover(path("Pump.orp"), how);
                if (recovered.outcome == Recovered::Outcome::failed) {
                    ASSERT_EQ(how, Recover::undo);
                    ASSERT_EQ(orchard::recover(path("Pump.orp"), Recover::byWhatIsThere).outcome,
                              Recovered::Outcome::finished);
                }
                warnings.clear();
                const End now = end();
                EXPECT_THAT(warnings, testing::IsEmpty());
                ASSERT_TRUE(now == before || now == after)
                    << testing::PrintToString(now.model) << testing::PrintToString(now.files);
                finished += recovered.outcome == Recovered::Outcome::finished;
                takenBack += recovered.outcome == Recovered::Outcome::takenBack;
                if (recovered.outcome == Recovered::Outcome::finished) {
                    ASSERT_EQ(now, after);
                } else if (recovered.outcome == Recovered::Outcome::takenBack) {
                    ASSERT_EQ(now, before);
                }
            }
            EXPECT_GT(call, 4) << "a change takes more steps than that";
        }
        EXPECT_GT(finished, 0);
        EXPECT_GT(takenBack, 0);
    }
    /// Crashes while a recovery is under way, and recovers again.
    void sweepRecovery(int firstCrash, const Change &change) {
        std::filesystem::copy(directory, original.path(), std::filesystem::copy_options::recursive);
        const End before = end();
        for (const Recover how : {Recover::finish, Recover::undo}) {
            End wished;
            for (int call = -1; call < 60; ++call) { // the first time, it comes to its end
                restore();
                ASSERT_TRUE(crashesAt(firstCrash, change));
                const bool crashes =
                    crashesAt(call, [&] { static_cast<void>(orchard::recover(path("Pump.orp"), how)); });
                SCOPED_TRACE("recovery ended before call " + std::to_string(call));
                EXPECT_NE(orchard::recover(path("Pump.orp"), how).outcome, Recovered::Outcome::failed);
                const End now = end();
                wished = call < 0 ? now : wished;
                EXPECT_EQ(now, wished);
                if (call >= 0 && !crashes) {
                    break;
                }
            }
            EXPECT_EQ(wished == before, how == Recover::undo);
        }
    }

    support::TemporaryDirectory original;
};

/// Moves what a tool would move, in steps of its own.
void likeATool(UnitChange &change) {
    for (const auto &file : change.files()) {
        if (file.to.empty() && file.isDirectory) {
            continue;
        }
        if (file.to.empty()) {
            ::unlink(file.from.c_str());
        } else if (file.isDirectory || !change.files().back().isDirectory) {
            ::mkdir(std::filesystem::path(file.to).parent_path().c_str(), 0777);
            ::rename(file.from.c_str(), file.to.c_str());
        } else { // within the directory, which follows
            const auto renamed =
                std::filesystem::path(file.from).parent_path() / std::filesystem::path(file.to).filename();
            ::rename(file.from.c_str(), renamed.c_str());
        }
    }
}

void runChange(UnitChange change, FilesBy by) {
    EXPECT_TRUE(change) << change.problems().front().message();
    change.begin(by, "the change");
    if (by == FilesBy::tool) {
        likeATool(change);
    }
    static_cast<void>(change.finish(by));
}

struct Changes : Crash, testing::WithParamInterface<FilesBy> {
    void SetUp() override { ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, ""); }
    /// Operator gets a directory of its own.
    void giveOperatorADirectory() {
        open();
        unit("Operator")->setMYpersAs("Desk");
        std::filesystem::create_directories(unitFile("Desk"));
        for (const std::string file : {"Operator.osb", "Panel.ocl"}) {
            std::filesystem::rename(unitFile(file), unitFile("Desk/" + file));
        }
        ASSERT_TRUE(orchard::saveProject(project).empty());
        orchard::closeAllProjects();
    }
};

TEST_P(Changes, ARenamingEndsBeforeOrAfter) {
    sweep([this] { runChange(UnitChange::rename(*unit("Valve"), "Gate"), GetParam()); });
}

TEST_P(Changes, ARenamingOfADirectoryEndsBeforeOrAfter) {
    sweep([this] { runChange(UnitChange::rename(*unit("Control"), "Logic"), GetParam()); });
}

TEST_P(Changes, AMoveEndsBeforeOrAfter) {
    sweep([this] {
        runChange(UnitChange::move({unit("Valve"), unit("FlowSensor")}, *unit("Control")), GetParam());
    });
}

TEST_P(Changes, AMoveOfManyFilesEndsBeforeOrAfter) {
    giveOperatorADirectory();
    sweep([this] { runChange(UnitChange::move({unit("Drives")}, *unit("Operator")), GetParam()); });
}

TEST_P(Changes, AMoveOfADirectoryEndsBeforeOrAfter) {
    giveOperatorADirectory();
    sweep([this] { runChange(UnitChange::move({unit("Control")}, *unit("Operator")), GetParam()); });
}

TEST_P(Changes, ARemovalEndsBeforeOrAfter) {
    sweep([this] { runChange(UnitChange::remove({unit("Valve")}), GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(By, Changes, testing::Values(FilesBy::host, FilesBy::tool),
                         [](const auto &row) { return row.param == FilesBy::host ? "Host" : "Tool"; });

struct CrashOfTheHost : Changes {};

TEST_P(CrashOfTheHost, ARemovalOfSeveralUnitsEndsBeforeOrAfter) {
    sweep([this] {
        runChange(UnitChange::remove({unit("Valve"), unit("Control"), unit("FlowSensor")}), GetParam());
    });
}

TEST_P(CrashOfTheHost, AChangeThatIsTakenBackEndsBefore) {
    std::filesystem::copy(directory, original.path(), std::filesystem::copy_options::recursive);
    const End before = end();
    const auto change = [this] {
        UnitChange move = UnitChange::move({unit("FlowSensor"), unit("Valve")}, *unit("Control"));
        move.begin(GetParam());
        ::chmod(unitFile("Drives.osb").c_str(), 0444); // the second owner can't be written
        static_cast<void>(move.finish(GetParam()));
    };
    int call = 0;
    for (restore(); crashesAt(call, change); restore(), ++call) {
        SCOPED_TRACE("before call " + std::to_string(call));
        ::chmod(unitFile("Drives.osb").c_str(), 0644);
        EXPECT_NE(orchard::recover(path("Pump.orp"), Recover::undo).outcome, Recovered::Outcome::failed);
        EXPECT_EQ(end(), before);
    }
    EXPECT_GT(call, 10);
    ::chmod(unitFile("Drives.osb").c_str(), 0644);
    EXPECT_EQ(end(), before);
}

TEST_P(CrashOfTheHost, ARecoveryThatCrashesIsRepeated) {
    sweepRecovery(5, [this] { runChange(UnitChange::rename(*unit("Control"), "Logic"), GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(By, CrashOfTheHost, testing::Values(FilesBy::host), [](const auto &) { return "Host"; });

TEST_F(Crash, OfAToolThatHasRemovedSomeOfTheUnitsLeavesTheOthers) {
    ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, "");
    const pid_t child = ::fork();
    if (child == 0) {
        open();
        UnitChange change = UnitChange::remove({unit("Valve"), unit("FlowSensor"), unit("Panel")});
        change.begin(FilesBy::tool);
        ::unlink(unitFile("Valve.ocl").c_str());
        ::unlink(unitFile("Panel.ocl").c_str());
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(orchard::recover(path("Pump.orp"), Recover::byWhatIsThere).outcome, Recovered::Outcome::finished);
    open();
    EXPECT_THAT(warnings, testing::IsEmpty());
    EXPECT_EQ(orchard::pathInModel(*unit("FlowSensor")), "Drives/Sensors/FlowSensor");
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile("Panel.ocl"), nullptr);
}

TEST_F(Crash, AMoveWithoutTheRightsLeavesNoDirectoryAndCanBeRepeated) {
    ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, "");
    open();
    unit("Operator")->setMYpersAs("Desk");
    std::filesystem::create_directories(unitFile("Desk"));
    for (const std::string file : {"Operator.osb", "Panel.ocl"}) {
        std::filesystem::rename(unitFile(file), unitFile("Desk/" + file));
    }
    ASSERT_TRUE(orchard::saveProject(project).empty());
    const auto before = filesNow();
    moveFault = EACCES;
    UnitChange change = UnitChange::move({unit("Control")}, *unit("Operator"));
    EXPECT_FALSE(change.finish(FilesBy::host).empty());
    moveFault = 0;
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(change.isOpen());
    EXPECT_EQ(filesNow(), before);
    EXPECT_THAT(UnitChange::move({unit("Control")}, *unit("Operator")).finish(FilesBy::host), testing::IsEmpty());
}

TEST_F(Crash, AProjectWithoutAPlanHasNothingToRecover) {
    ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, "");
    EXPECT_EQ(orchard::recover(path("Pump.orp"), Recover::finish).outcome, Recovered::Outcome::nothing);
    EXPECT_EQ(orchard::unfinishedChange(path("Pump.orp")).file, "");
}

TEST_F(Crash, APlanThatCanNotBeReadIsNamedAndStays) {
    ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, "");
    write(path("Pump.orp.change"), "what");
    const Recovered recovered = orchard::recover(path("Pump.orp"), Recover::finish);
    EXPECT_EQ(recovered.outcome, Recovered::Outcome::failed);
    ASSERT_EQ(recovered.problems.size(), 1U);
    EXPECT_THAT(recovered.problems[0].message(),
                testing::HasSubstr("Pump.orp.change: this is not the complete plan"));
    EXPECT_EQ(read(path("Pump.orp.change")), "what");
}

} // namespace
