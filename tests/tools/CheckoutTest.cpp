// Tests check out with the real program on real RCS archives.
#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::Ran;
using tools::Workplace;

namespace {

constexpr auto pumpText = "One pump with its motor protection.";
constexpr auto newPumpText = "One pump, changed by bob.";

bool isWritable(const fs::path &file) {
    return (fs::status(file).permissions() & fs::perms::owner_write) != fs::perms::none;
}

struct Checkout : testing::Test {
    tools::RcsProject project;
    fs::path pump = project.fileOf("Pump");

    Ran checkout(std::vector<std::string> words) {
        words.insert(words.begin(), {"--json", "checkout"});
        return project.onProject(words);
    }
    static nlohmann::json first(const Ran &ran) { return ran.json()["items"][0]; }
    static std::string read(const fs::path &file) { return Workplace::read(file); }
};

} // namespace

TEST_F(Checkout, BringsANewVersionIntoTheModelReadOnly) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran = project.onProject({"batch"}, "show Pump\ncheckout Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(pumpText));
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: checked out, file changed, version 1.1 -> 1.2, RO"));
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
    EXPECT_FALSE(isWritable(pump));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}

TEST_F(Checkout, LocksAFileToWorkOnIt) {
    const Ran ran = checkout({"--lock", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["before"]["state"], "RO");
    EXPECT_EQ(first(ran)["after"]["state"], "RW");
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}

TEST_F(Checkout, FailsWhereAnotherHoldsTheLock) {
    project.lockElsewhere("bob", pump);
    const std::string before = read(pump);
    const Ran ran = checkout({"--lock", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "failed");
    EXPECT_THAT(ran.json()["window"].get<std::string>(), HasSubstr("bob"));
    EXPECT_EQ(read(pump), before);
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "bob: 1.1");
}

TEST_F(Checkout, TellsAFailureAlsoWhenALaterUnitSucceeds) {
    project.lockElsewhere("bob", pump);
    const Ran ran = checkout({"--lock", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "failed");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "checked out") << ran.out;
}

TEST_F(Checkout, OverwritesAWritableFileAfterAYes) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran = checkout({"--yes", "Pump"});
    EXPECT_EQ(first(ran)["fileChanged"], true) << ran.out;
    EXPECT_THAT(read(pump), HasSubstr(newPumpText));
    EXPECT_EQ(ran.json()["messages"][0]["kind"], "question");
}

TEST_F(Checkout, KeepsAWritableFileAfterANo) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.shell("sed -i 's/One pump/My pump/' " + tools::quoted(pump.string()));
    const std::string mine = read(pump);
    ASSERT_THAT(mine, HasSubstr("My pump"));
    const Ran ran = checkout({"--no", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "skipped");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "checked out") << ran.out;
    EXPECT_EQ(read(pump), mine);
}

TEST_F(Checkout, CountsAUnitAsReloadedOnlyIfItsFileWasReadAgain) {
    project.shell("co -q -l " + tools::quoted(pump.string()) + " && ci -q -u -f -m'the same' " +
                  tools::quoted(pump.string()) + " && co -q -r1.1 " + tools::quoted(pump.string()));
    const Ran same = project.onProject({"checkout", "Pump"});
    EXPECT_EQ(same.out, "Drives/Pump: checked out, file changed, version 1.1 -> 1.2, RO\n") << same.err;
}

TEST_F(Checkout, TakesNoForAnAnswerWhereNobodyCanBeAsked) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    const std::string before = read(pump);
    const Ran ran = project.onProject({"checkout", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.err, HasSubstr("nobody to ask"));
    EXPECT_THAT(ran.out, HasSubstr("skipped"));
    EXPECT_EQ(read(pump), before);
}

TEST_F(Checkout, NeverOverwritesAFileByLeavingTheQuestion) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.shell("sed -i 's/One pump/My pump/' " + tools::quoted(pump.string()));
    const std::string mine = read(pump);
    ASSERT_THAT(mine, HasSubstr("My pump"));
    const auto checkoutAndType = [this](const std::string &typed) {
        return project.cmAtTerminal({"-p", project.projectFile().string(), "checkout", "Pump"}, typed);
    };
    const Ran closed = checkoutAndType("q\nno\n");
    EXPECT_EQ(closed.exit, 1) << closed.err;
    EXPECT_THAT(closed.err, HasSubstr("needs an answer"));
    EXPECT_EQ(read(pump), mine);
    const Ran ended = checkoutAndType("q\n\x04");
    EXPECT_EQ(ended.exit, 1) << ended.err;
    EXPECT_THAT(ended.err, HasSubstr("[No: there was no answer]"));
    EXPECT_EQ(read(pump), mine);
}

TEST_F(Checkout, NeverOverwritesAFileByClosingTheTerminal) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.shell("sed -i 's/One pump/My pump/' " + tools::quoted(pump.string()));
    const std::string mine = read(pump);
    ASSERT_THAT(mine, HasSubstr("My pump"));
    for (const int signal : {0, SIGHUP}) { // a program started with nohup gets no signal
        const Ran closed = project.cmAtTerminalThatCloses(
            {"-p", project.projectFile().string(), "checkout", "Pump"}, "Check it out?", signal);
        EXPECT_EQ(closed.exit, signal == 0 ? 1 : 130) << closed.err;
        EXPECT_EQ(read(pump), mine);
    }
}

TEST_F(Checkout, OverwritesAFileAfterAYesAtTheTerminal) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran = project.cmAtTerminal({"-p", project.projectFile().string(), "checkout", "Pump"}, "yes\n");
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(read(pump), HasSubstr(newPumpText));
}

TEST_F(Checkout, AnswersAllQuestionsWithOneYesToAll) {
    const fs::path valve = project.fileOf("Valve");
    project.shell("chmod u+w " + tools::quoted(pump.string()) + " " + tools::quoted(valve.string()));
    const Ran ran = checkout({"--yes-to-all", "Pump", "Valve"});
    std::size_t questions = 0;
    const auto json = ran.json();
    for (const auto &message : json["messages"]) {
        questions += message["kind"] == "question" ? 1U : 0U;
    }
    EXPECT_EQ(questions, 1U) << ran.out;
}

TEST_F(Checkout, BringsAMissingFileBack) {
    // A unit whose file is missing when the model is read is known, but not loaded.
    const std::string before = read(pump);
    fs::remove(pump);
    const Ran ran = checkout({"Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out;
    EXPECT_EQ(first(ran)["before"]["state"], "U");
    EXPECT_EQ(first(ran)["after"]["state"], "RO");
    EXPECT_EQ(read(pump), before);
}

TEST_F(Checkout, BringsABrokenFileBack) {
    const std::string good = read(pump);
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    Workplace::write(pump, "<cl");
    project.shell("chmod u-w " + tools::quoted(pump.string()));
    const Ran ran = checkout({"Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out;
    EXPECT_EQ(first(ran)["before"]["state"], "U");
    EXPECT_EQ(first(ran)["after"]["state"], "RO");
    EXPECT_EQ(read(pump), good);
    EXPECT_EQ(project.show("Pump")["state"], "RO");
}

TEST_F(Checkout, FailsWhereTheArchiveIsGone) {
    fs::remove(tools::RcsProject::archiveOf(pump));
    const std::string before = read(pump);
    const Ran ran = checkout({"Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "failed");
    EXPECT_EQ(read(pump), before);
    EXPECT_EQ(project.show("Pump")["state"], "RO");
}

TEST_F(Checkout, NothingOfALabelIsRunOrTakenForAnOption) {
    const fs::path proof = project.directory() / "proof";
    const std::string touch = "touch " + tools::quoted(proof.string());
    for (const std::string &label :
         {"1.1;" + touch, "1.1 ;" + touch, "1.1&" + touch, "1.1|" + touch, "1.1\n" + touch, "$(" + touch + ")",
          "`" + touch + "`", "1.1 $(" + touch + ")", "1.1\" ;" + touch + ";\"", "1.1';" + touch + ";'",
          "1.1'\";" + touch + ";\"'", "1.1>" + proof.string(), "1.1 >" + proof.string(), "1.1\\"s, "-l"s, "1.1<x"s,
          "1.1\t-l"s, "(1.1 ? x)"s}) {
        const std::string before = read(pump);
        for (const bool fromArchive : {false, true}) {
            std::vector<std::string> words{"--label=" + label, fromArchive ? pump.string() : "Pump"};
            if (fromArchive) {
                words.emplace_back("--archive");
            }
            const Ran ran = checkout(words);
            // Refused by the program, or by the tool, which got it in quotes.
            EXPECT_THAT(ran.exit, testing::AnyOf(1, 2)) << label << '\n' << ran.out << ran.err;
            EXPECT_THAT(ran.out + ran.err,
                        testing::AnyOf(HasSubstr("the label can't be given to a tool"), HasSubstr("is undefined")))
                << label;
        }
        EXPECT_FALSE(fs::exists(proof)) << label;
        EXPECT_EQ(read(pump), before) << label;
        EXPECT_THAT(project.locksOf(pump), IsEmpty()) << label;
    }
}

// A host that hands labels on unseen is covered by the property set alone.
TEST_F(Checkout, TheShippedCommandKeepsALabelFromTheShell) {
    const fs::path proof = project.directory() / "proof";
    for (const std::string &label :
         {"1.1;touch " + proof.string(), "1.1&touch " + proof.string(), "$(touch " + proof.string() + ")",
          "1.1\" ;touch " + proof.string() + ";\""}) {
        const Ran ran = project.onProject({"expand", "--property", "LabelPart", "--label", label});
        if (ran.exit == 0) {
            project.shell(": " + ran.out);
        }
        EXPECT_FALSE(fs::exists(proof)) << label << ran.out;
    }
}

TEST_F(Checkout, TakesTheVersionThatALabelNames) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    ASSERT_EQ(checkout({"Pump"}).exit, 0);
    const Ran ran = checkout({"--label", "1.1", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out;
    EXPECT_EQ(first(ran)["after"]["version"], "1.1");
    EXPECT_THAT(read(pump), HasSubstr(pumpText));
}

TEST_F(Checkout, WorksOnAllUnitsBelowWithRecursive) {
    const fs::path level = project.fileOf("LevelSensor");
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    project.changeElsewhere("bob", level, "from a current of 4 to 20 mA", "from a radar");
    const Ran ran =
        project.onProject({"batch", "--json"}, "checkout --recursive Drives\nshow Pump\nshow LevelSensor\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
    EXPECT_THAT(ran.out, HasSubstr("from a radar."));
    for (const auto *const name :
         {"Drives\"", "Drives/Pump", "Drives/Valve", "Drives/Sensors", "Drives/Sensors/FlowSensor"}) {
        EXPECT_THAT(ran.out, HasSubstr(name));
    }
    EXPECT_THAT(ran.out, Not(HasSubstr("Operator/Panel")));
}

TEST_F(Checkout, ReplacesAnEmbeddedFileAndLeavesTheModelAlone) {
    const fs::path wiring = project.fileOf("wiring.txt");
    project.changeElsewhere("bob", wiring, "4-20 mA", "0-10 V");
    const Ran ran = checkout({"wiring.txt"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["fileChanged"], true);
    EXPECT_EQ(first(ran)["newObject"], false);
    EXPECT_THAT(read(wiring), HasSubstr("0-10 V"));
}

TEST_F(Checkout, FromTheArchiveReloadsAUnitThatTheModelKnows) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran =
        project.onProject({"batch"}, "checkout --archive " + tools::quoted(pump.string()) + "\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
}

TEST_F(Checkout, FromTheArchiveWorksOnAWholeDirectoryWithRecursive) {
    const fs::path controller = project.fileOf("PumpController");
    project.changeElsewhere("bob", controller, "Starts and stops the pumps", "Runs the pumps");
    const Ran ran = project.onProject({"batch", "--json"}, "checkout --archive --recursive " +
                                                               tools::quoted(controller.parent_path().string()) +
                                                               "\nshow PumpController\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Control/LevelRegulator"));
    EXPECT_THAT(ran.out, HasSubstr("Runs the pumps by the level"));
}

TEST_F(Checkout, SkipsALaterUnitThatTheReloadOfAnEarlierOneReplaced) {
    // A subsystem whose elements change is read again with everything below it.
    project.changeElsewhere(
        "bob", project.fileOf("Drives"), "What moves water.</description>",
        "What moves water.</description>\\n  <class id=\"0b6d5a52-6f0c-4c1e-9f7a-1d2c3b4a5f60\">"
        "\\n    <name>Coupling</name>\\n  </class>");
    const Ran ran = project.onProject({"--json", "batch", "--keep-going"},
                                      "checkout Drives Pump Panel\nshow Drives\nshow Pump\n");
    const auto checkout = nlohmann::json::parse(ran.out.substr(0, ran.out.find('\n')));
    EXPECT_EQ(checkout["items"][0]["outcome"], "checked out") << ran.out;
    EXPECT_EQ(checkout["items"][1]["outcome"], "failed");
    EXPECT_THAT(checkout["items"][1].value("reason", ""), HasSubstr("the reload of an earlier unit replaced this one"));
    EXPECT_EQ(checkout["items"][2]["outcome"], "checked out");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("\"name\":\"Coupling\""));
    EXPECT_THAT(ran.out, HasSubstr(pumpText));
}

TEST_F(Checkout, FromTheArchiveBringsInAFileThatTheModelDoesNotKnow) {
    const std::string valve = read(project.fileOf("Valve"));
    const fs::path boiler = pump.parent_path() / "Boiler.ocl";
    std::string text = valve;
    for (auto at = text.find("id=\""); at != std::string::npos; at = text.find("id=\"", at + 4)) {
        text[at + 4] = text[at + 4] == 'f' ? 'e' : 'f'; // different elements
    }
    text.replace(text.find("<name>Valve"), 11, "<name>Boiler");
    Workplace::write(boiler, text);
    project.shell("ci -q -t-unit -m'bob adds a boiler' " + tools::quoted(boiler.string()));
    ASSERT_FALSE(fs::exists(boiler));
    ASSERT_EQ(checkout({"--lock", "Drives"}).exit, 0);
    const Ran ran = checkout({"--archive", boiler.string()});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["before"]["inModel"], false);
    EXPECT_EQ(first(ran)["after"]["inModel"], true);
    EXPECT_EQ(project.show("Boiler")["path"], "Drives/Boiler") << "its owner was not saved";
}

TEST_F(Checkout, FromTheArchiveAsksBeforeItOverwritesAChangedFileWithoutAUnit) {
    const fs::path boiler = pump.parent_path() / "Boiler.txt";
    Workplace::write(boiler, "archived");
    project.shell("ci -q -u -t-text -m'bob adds a text' " + tools::quoted(boiler.string()));
    for (const std::vector<std::string> &form :
         {std::vector<std::string>{"--archive"}, std::vector<std::string>{"--archive", "--recursive"}}) {
        fs::permissions(boiler, fs::perms::owner_read | fs::perms::owner_write);
        Workplace::write(boiler, "changed");
        const auto words = [&](const std::string &answer) {
            std::vector<std::string> all{answer};
            all.insert(all.end(), form.begin(), form.end());
            all.push_back(boiler.string());
            return all;
        };
        const Ran kept = checkout(words("--no"));
        EXPECT_EQ(kept.exit, 1);
        EXPECT_EQ(first(kept)["outcome"], "skipped") << kept.out;
        EXPECT_THAT(kept.json()["messages"][0].value("text", ""), HasSubstr("Boiler.txt\" is writable"));
        EXPECT_EQ(read(boiler), "changed");
        checkout(words("--yes"));
        EXPECT_EQ(read(boiler), "archived");
    }
}

TEST_F(Checkout, KeepsTheUnitWhereTheNewVersionCannotBeRead) {
    project.changeElsewhere("bob", pump, "<description>", "<descript");
    const Ran ran = project.onProject({"batch", "--keep-going"}, "checkout Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: failed"));
    EXPECT_THAT(ran.err, HasSubstr(pump.filename().string() + ":"));
    EXPECT_THAT(ran.out, HasSubstr(pumpText)) << "the loaded unit holds what it held";
}

TEST_F(Checkout, SuggestsUnitsForAMistypedName) {
    const Ran ran = checkout({"Pumb"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["error"]["suggestions"][0], "Pump");
}

TEST_F(Checkout, ChecksNothingOutWhereOneNameIsWrong) {
    const Ran ran = checkout({"--lock", "Pump", "Nothing"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_FALSE(isWritable(pump));
}
