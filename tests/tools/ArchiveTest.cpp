// Tests connect, add, list, fetch and history on real RCS archives.
#include "tests/tools/DailyCycle.h"

#include <algorithm>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::Ran;

namespace {

struct Archive : tools::DailyCycle {};
struct Fetch : tools::DailyCycle {};
struct History : tools::DailyCycle {};
struct Header : tools::DailyCycle {};

/// Runs the program on the project in a directory created for it; `words` are shell text.
Ran runIn(tools::Workplace &place, const fs::path &project, const std::string &directory,
          const std::string &words) {
    return place.shell("mkdir " + tools::quoted(directory) + " && cd " + tools::quoted(directory) + " && " +
                       tools::quoted(ORCHARD_CM_PROGRAM) + " --json -p " + tools::quoted(project.string()) + " " +
                       words);
}

/// A project that is not under RCS.
struct Fresh : testing::Test {
    tools::Workplace place;
    fs::path file = place.directory() / "plant" / "station.orp";
    Fresh() { EXPECT_EQ(place.cm({"new", "plant/station", "--tool", "RCS"}).exit, 0); }
    Ran run(std::vector<std::string> words) {
        words.insert(words.begin(), {"--json", "-p", file.string()});
        return place.cm(words);
    }
    [[nodiscard]] fs::path units() const { return place.directory() / "plant" / "station_ory"; }
};
struct Connect : Fresh {};
/// A tool that names the address of its archive; any command can answer for it.
struct ConnectToAddress : Connect {
    ConnectToAddress() { EXPECT_EQ(run({"tool", "Subversion"}).exit, 0); }
    void choose(const std::string &command) {
        EXPECT_EQ(run({"property", "set", "ConnectToCMRepository", "--", command}).exit, 0);
    }
    Ran connectTo(const std::string &command) {
        choose(command);
        return run({"connect"});
    }
    std::string value(const std::string &key) { return run({"property", "get", key}).json().value("value", ""); }
    /// Returns the contents of all files of the project, but for the lock.
    std::string everything() {
        return place.shell("find plant -type f ! -name '*.lock' | sort | xargs tail -n +1").out;
    }
    /// Makes a new project, which is not connected.
    void forget() {
        fs::remove_all(place.directory() / "plant");
        EXPECT_EQ(place.cm({"new", "plant/station", "--tool", "Subversion"}).exit, 0);
    }
};
struct Add : Fresh {
    Add() { EXPECT_EQ(run({"connect"}).exit, 0); }
};

nlohmann::json rowOf(const Ran &ran, const std::string &unit) {
    const auto json = ran.json();
    for (const auto &row : json["files"]) {
        if (row.value("unit", "") == unit) {
            return row;
        }
    }
    return {};
}

} // namespace

TEST_F(Connect, MakesTheArchiveThatIsNamedAndKeepsIt) {
    const fs::path archive = place.directory() / "the archive";
    const Ran ran = run({"connect", "the archive"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["archive"], archive.string()) << "a path counts from the current directory";
    EXPECT_TRUE(fs::is_directory(archive));
    EXPECT_EQ(run({"property", "get", "CMArchive"}).json()["value"], archive.string());
    EXPECT_EQ(run({"add", "Pump"}).exit, 0);
    EXPECT_TRUE(fs::exists(archive / "Pump.ocl,v"));
}
TEST_F(Connect, LeavesTheProjectAsItWasWhereTheToolFails) {
    const Ran ran = run({"connect", "/proc/nowhere/archive"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.json()["error"]["message"].get<std::string>(), HasSubstr("not connected"));
    EXPECT_EQ(run({"property", "get", "CMArchive"}).json()["value"], "");
}
TEST_F(ConnectToAddress, WritesTheAddressThatTheToolNames) {
    const Ran ran = connectTo("echo file:///one");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["repository"], "file:///one$SubDirs");
    EXPECT_EQ(value("ArchiveRoot"), "file:///one");
}

TEST_F(ConnectToAddress, TakesTheAddressOfAnotherArchiveTheNextTime) {
    ASSERT_EQ(connectTo("echo file:///one").exit, 0);
    const Ran ran = connectTo("echo file:///two");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["repository"], "file:///two$SubDirs");
    EXPECT_EQ(value("Repository"), "file:///two$SubDirs");
    EXPECT_EQ(value("ArchiveRoot"), "file:///two");
}

TEST_F(ConnectToAddress, KeepsALayoutThatNoConnectHasWritten) {
    ASSERT_EQ(run({"property", "set", "Repository", "--", "file:///mine"}).exit, 0);
    EXPECT_EQ(connectTo("echo file:///one").exit, 0);
    EXPECT_EQ(value("Repository"), "file:///mine");
}

TEST_F(ConnectToAddress, ChangesNothingWhereTheToolFailsOrNamesNoGoodAddress) {
    // A script of its own, since a redirection in a template is the library's.
    tools::Workplace::write(place.directory() / "fails",
                            "echo file:///two; echo svn: E170013: no such server >&2; exit 1");
    const std::string fails = "sh " + tools::quoted((place.directory() / "fails").string());
    for (const auto &[command, fault] :
         {std::pair(fails.c_str(), "no such server"),
          std::pair("echo nothing to see",
                    "names no address of the archive (property HeaderInfoItsRepositoryPath)"),
          std::pair("echo 'file:///a\"b'", "no command can quote")}) {
        for (const bool isConnected : {false, true}) {
            if (isConnected) {
                ASSERT_EQ(connectTo("echo file:///one").exit, 0);
            }
            choose(command);
            const std::string before = everything();
            const Ran ran = run({"connect", "elsewhere"});
            EXPECT_EQ(ran.exit, 1) << command;
            EXPECT_EQ(ran.json()["ok"], false);
            EXPECT_THAT(ran.json()["error"].value("message", ""),
                        testing::AllOf(HasSubstr("the project is not connected: "), HasSubstr(fault)));
            EXPECT_EQ(everything(), before) << command;
            EXPECT_EQ(value("Repository"), isConnected ? "file:///one$SubDirs" : "$ArchivePath$SubDirs");
            forget();
        }
    }
}

TEST_F(ConnectToAddress, RunsNothingWhereTheProjectCannotBeSaved) {
    choose("echo file:///one; touch " + tools::quoted((place.directory() / "ran").string()));
    place.shell("chmod a-w " + tools::quoted((units() / "station.ory").string()));
    const Ran ran = run({"connect"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.json()["error"].value("message", ""), HasSubstr("station.ory is read-only"));
    EXPECT_FALSE(fs::exists(place.directory() / "ran"));
}

TEST_F(Connect, RefusesAnArchiveThatNoCommandLineCanQuote) {
    const Ran ran = run({"connect", "a\"; touch proof; \""});
    EXPECT_EQ(ran.exit, 2);
    EXPECT_FALSE(fs::exists(place.directory() / "proof"));
}

TEST_F(Connect, RefusesAnArchiveInACurrentDirectoryThatNoCommandLineCanQuote) {
    for (const char *const here : {"a$(touch proof)", "a(b?c)"}) {
        const Ran ran = runIn(place, file, here, "connect archive");
        EXPECT_EQ(ran.exit, 2) << ran.out << ran.err;
        EXPECT_THAT(ran.out, HasSubstr("can't be given to a tool"));
    }
    EXPECT_EQ(run({"property", "get", "CMArchive"}).json()["value"], "");
    EXPECT_FALSE(fs::exists(units() / "proof"));
    EXPECT_FALSE(fs::exists(place.directory() / "ab"));
}

TEST_F(Add, TakesEachDirectoryOnceWhereTheSetSaysSo) {
    const auto set = [&](const std::string &key, const std::string &value) {
        EXPECT_EQ(run({"property", "set", "--metaclass", "RCS", key, "--", value}).exit, 0) << key;
    };
    set("CheckOutCheckInDirectoryOnceDuringAddToArchive", "true");
    set("CheckOut", "echo out \"$LabelPart\" | tee -a steps");
    set("AddMember_WithoutCheckOutCheckInDirectory",
        "ci -q -u -t-x -mx \"$UnitPath\" && echo add \"$UnitPath\" | tee -a steps");
    set("CheckIn", "echo in $LogPart \"$UnitPath\" | tee -a steps");
    const Ran ran = run({"add", "Pump", "PumpController", "Valve"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    const std::string root = units().string();
    const std::string control = (units() / "Control").string();
    const std::string steps = place.shell("find . -name steps -exec cat {} +").out;
    EXPECT_THAT(steps, HasSubstr("out " + root + "\nadd " + root + "/Pump.ocl\nadd " + root +
                                 "/Valve.ocl\nin -nc " + root + "\n"));
    EXPECT_THAT(
        steps, HasSubstr("out " + control + "\nadd " + control + "/PumpController.ocl\nin -nc " + control + "\n"));
    EXPECT_EQ(std::ranges::count(steps, '\n'), 7);
    EXPECT_EQ(place.shell("find . -name Valve.ocl -perm -u+w").out, "");
}
TEST_F(Add, GoesTheWayOfTheToolThatWasChosenLast) {
    EXPECT_EQ(
        run({"property", "set", "--metaclass", "RCS", "CheckOutCheckInDirectoryOnceDuringAddToArchive", "true"})
            .exit,
        0);
    EXPECT_EQ(run({"tool", "Subversion"}).exit, 0);
    EXPECT_EQ(run({"property", "get", "--metaclass", "General", "CMTool"}).json()["value"], "Subversion");
    EXPECT_EQ(run({"tool", "RCS"}).exit, 0);
    EXPECT_EQ(run({"property", "get", "--metaclass", "General", "CMTool"}).json()["value"], "RCS");
}
TEST_F(Add, PutsUnitsIntoTheArchiveWithTheirComment) {
    const Ran ran = run({"add", "--log", "for the first time", "Pump", "wiring.txt"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "added");
    EXPECT_EQ(ran.json()["items"][0]["after"]["version"], "1.1");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "added");
    const Ran log = place.shell("rlog " + tools::quoted((units() / "Pump.ocl").string()));
    EXPECT_EQ(log.exit, 0);
    EXPECT_THAT(log.out, HasSubstr("for the first time"));
    EXPECT_EQ(place.shell("rlog -h " + tools::quoted((units() / "wiring.txt").string())).exit, 0);
}
TEST_F(Add, TakesTheWholeProjectWithRecursive) {
    const Ran ran = run({"add", "--recursive", "station"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["items"].size(), run({"list"}).json()["units"].size());
    EXPECT_EQ(run({"archive"}).json()["files"].size(), ran.json()["items"].size());
}
TEST_F(Add, FailsForAUnitThatIsThereAlready) {
    ASSERT_EQ(run({"add", "Pump"}).exit, 0);
    const Ran ran = run({"add", "Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_EQ(run({"list"}).exit, 0);
}

TEST_F(Archive, ListsFilesWithVersionModeAndLocker) {
    lock("Pump");
    const Ran ran = run({"archive"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(rowOf(ran, "Drives/Pump")["version"], "1.1");
    EXPECT_EQ(rowOf(ran, "Drives/Pump")["mode"], "RW");
    EXPECT_EQ(rowOf(ran, "Drives/Pump")["locker"], "anna");
    EXPECT_EQ(rowOf(ran, "Drives/Valve")["mode"], "RO");
    EXPECT_FALSE(rowOf(ran, "Drives/Valve").contains("locker"));
    EXPECT_THAT(ran.json().value("window", ""), IsEmpty()) << "the raw listing would only repeat it";
}
TEST_F(Archive, IsToldAsATableToo) {
    const Ran ran = project.onProject({"archive"});
    EXPECT_THAT(ran.out, HasSubstr("VERSION  MODE  LOCKER  UNIT"));
    EXPECT_THAT(ran.out, testing::ContainsRegex("1.1 +RO +Drives/Pump +Pump.ocl"));
    EXPECT_THAT(project.onProject({"archive", "--paths"}).out, HasSubstr("Control/AlarmList.ocl\n"));
}
TEST_F(Archive, ThatCannotBeListedIsAFailure) {
    project.replaceProgram("rlog", "echo 'rlog: no such place' >&2; exit 3");
    const Ran ran = run({"archive"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(errorOf(ran), HasSubstr("can't be listed"));
    EXPECT_THAT(ran.out, HasSubstr("no such place"));
}

TEST_F(Fetch, BringsTheArchivedFileBackAndReloadsTheUnit) {
    project.changeElsewhere("bob", pump, "One pump with", "Two pumps with");
    const Ran ran = project.onProject({"batch"}, "show Pump\nfetch Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: fetched, file changed, version 1.1 -> 1.2, RO, reloaded"));
    EXPECT_THAT(ran.out.substr(ran.out.find("fetched")), HasSubstr("Two pumps with"));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}
TEST_F(Fetch, PutsAnEarlierVersionElsewhereAndLeavesTheModelAlone) {
    project.changeElsewhere("bob", pump, "One pump with", "Two pumps with");
    ASSERT_EQ(run({"fetch", "Pump"}).exit, 0);
    const std::string before = read(pump);
    const fs::path there = project.directory() / "old ones";
    for (const bool archive : {false, true}) {
        fs::remove_all(there);
        std::vector<std::string> words{"fetch", "--label=1.1", "--to", there.string(),
                                       archive ? pump.string() : "Pump"};
        if (archive) {
            words.emplace_back("--archive");
        }
        const Ran ran = run(words);
        EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
        EXPECT_THAT(read(there / "Pump.ocl"), HasSubstr("One pump with"));
        EXPECT_EQ(read(pump), before);
    }
}
TEST_F(Fetch, RefusesADirectoryInACurrentOneThatNoCommandLineCanQuote) {
    for (const char *const here : {"a$(touch proof)", "a(b?c)"}) {
        const Ran ran = runIn(project, project.projectFile(), here, "fetch --to old Pump");
        EXPECT_EQ(ran.exit, 2) << ran.out << ran.err;
        EXPECT_THAT(errorOf(ran), HasSubstr("can't be used"));
        EXPECT_FALSE(fs::exists(project.directory() / here / "old"));
    }
    EXPECT_FALSE(fs::exists(pump.parent_path() / "proof"));
}
TEST_F(Fetch, LeavesAWritableFileAlone) {
    lock("Pump");
    change(pump, "One pump", "My pump");
    const Ran ran = run({"fetch", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(read(pump), HasSubstr("My pump"));
}

TEST_F(History, IsWhatTheToolTells) {
    project.changeElsewhere("bob", pump, "One pump with", "Two pumps with");
    const Ran ran = project.onProject({"history", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("revision 1.2"));
    EXPECT_THAT(ran.out, HasSubstr("a change"));
    EXPECT_THAT(ran.err, Not(HasSubstr("revision 1.2"))) << "once is enough";
    const auto json = run({"history", "Pump", "Valve"}).json();
    EXPECT_THAT(json["items"][0]["history"].get<std::string>(), HasSubstr("revision 1.2"));
    EXPECT_THAT(json["items"][1]["history"].get<std::string>(), HasSubstr("revision 1.1"));
}
TEST_F(History, FailsForAUnitThatTheToolDoesNotKnow) {
    fs::remove(tools::RcsProject::archiveOf(pump));
    const Ran ran = run({"history", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(reason(ran), HasSubstr("No such file"));
}

TEST_F(Header, IsToldWithTheDefaultOneVersionAndLocker) {
    lock("Pump");
    const auto json = run({"header", "Pump"}).json()["unit"];
    EXPECT_THAT(json["header"].get<std::string>(), HasSubstr("$Revision: 1.1 $"));
    EXPECT_THAT(json["defaultHeader"].get<std::string>(), HasSubstr("$Revision$"));
    EXPECT_EQ(json["version"], "1.1");
    EXPECT_EQ(json["locker"], "anna");
    EXPECT_THAT(project.onProject({"header", "Pump"}).out, HasSubstr("Locked by: anna\n"));
}
TEST_F(Header, GivesTheListItsVersionAndLocker) {
    lock("Pump");
    EXPECT_THAT(project.onProject({"list"}).out, testing::ContainsRegex("RW +Class +1.1 +anna +Drives/Pump"));
    const auto json = run({"list"}).json();
    for (const auto &unit : json["units"]) {
        if (unit["path"] == "Drives/Pump") {
            EXPECT_EQ(unit["version"], "1.1");
            EXPECT_EQ(unit["locker"], "anna");
        }
    }
}
