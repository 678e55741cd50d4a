// Comments, labels and names that would be commands: nothing that they hold is run, and no file appears.
#include "tests/tools/scenario/Project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <unistd.h>

namespace fs = std::filesystem;
using scenario::Names;
using scenario::Project;
using scenario::Skill;
using testing::HasSubstr;
using tools::Ran;

namespace {

/// PROOF stands for a file that appears if the text is run; its path holds no blank.
constexpr auto corpus = std::to_array<const char *>({
    ";touch PROOF",
    "x;touch PROOF;x",
    "x; touch PROOF; x",
    "&touch PROOF",
    "x && touch PROOF",
    "x || touch PROOF",
    "|touch PROOF",
    "$(touch PROOF)",
    "x$(touch PROOF)x",
    "${HOME}",
    "$HOME",
    "`touch PROOF`",
    "x `touch PROOF` x",
    "'; touch PROOF; '",
    "';touch${IFS}PROOF;'",
    "it's; touch PROOF; it's",
    "\"; touch PROOF; \"",
    "\";touch PROOF;\"",
    "\"$(touch PROOF)\"",
    "'\"; touch PROOF; \"'",
    "\\\"; touch PROOF; \\\"",
    "\\",
    "x\\",
    "x\\\\\"; touch PROOF; \"",
    "x\ntouch PROOF\n",
    "\ntouch PROOF\n",
    "x\r\ntouch PROOF",
    "x > PROOF",
    ">PROOF",
    ">>PROOF",
    "2>PROOF",
    "<PROOF",
    "<<EOF",
    "-x",
    "--",
    "-mPROOF",
    "--help",
    "-F/etc/passwd",
    "--file=/etc/passwd",
    "--editor-cmd=touch PROOF",
    "--config-option=config:helpers:editor-cmd=touch PROOF",
    "@/etc/passwd",
    "#touch PROOF",
    "!touch",
    "~",
    "*",
    "?",
    "{a,b}",
    "%s%n%d",
    "(x ? $(touch PROOF) : y)",
    "(x ? y)",
    "$log",
    "$UnitPath",
    "$OQROOT",
    "\xff\xfe",
    "\xc3",
    "\x01\x02",
    "a\tb",
});

struct HostileText : testing::TestWithParam<const char *> {
    HostileText() : project(GetParam(), Names()) {
        good({"connect"}, project.archive().archive().empty()
                              ? std::vector<std::string>{}
                              : std::vector<std::string>{project.archive().archive()});
        good({"add", "--log", "First"}, {"Drives", "Pump", "Valve", "station"});
    }

    void good(const std::vector<std::string> &words, const std::vector<std::string> &items) {
        const Ran ran = project.run(words, items);
        ASSERT_EQ(ran.exit, 0) << words.front() << ran.out << ran.err;
    }
    /// The text of the corpus with the file's path in it, and that file gone.
    std::string armed(std::string text) {
        fs::remove(proof);
        for (auto at = text.find("PROOF"); at != std::string::npos; at = text.find("PROOF", at + proof.size())) {
            text.replace(at, 5, proof);
        }
        return text;
    }
    void expectHarmless(const std::string &text, const std::set<std::string> &before) {
        EXPECT_FALSE(fs::exists(proof)) << text;
        EXPECT_EQ(project.files(), before) << text;
    }

    Project project;
    std::string proof = "/tmp/orchard-proof-" + std::string(GetParam()) + std::to_string(getpid());
};

TEST_P(HostileText, AsACommentArrivesAsItIsOrIsRefused) {
    const auto before = project.files();
    int arrived = 0;
    int number = 0;
    for (const char *const plain : corpus) {
        good({"checkout", "--lock"}, {"Pump"});
        project.edit("Pump.ocl", "<description>", "<description>" + std::to_string(++number) + ". ");
        const std::string text = armed(plain);
        const int versions = project.archive().versions("Pump.ocl");
        const Ran ran = project.run({"checkin", "--log=" + text}, {"Pump"});
        expectHarmless(text, before);
        if (ran.exit == 0) {
            EXPECT_EQ(project.archive().versions("Pump.ocl"), versions + 1) << text;
            EXPECT_EQ(project.archive().comment("Pump.ocl"), scenario::trimmed(text)) << text;
            ++arrived;
        } else {
            EXPECT_EQ(project.archive().versions("Pump.ocl"), versions) << text << ran.out << ran.err;
            EXPECT_FALSE(ran.err.empty()) << text << ": nobody was told";
            good({"checkin", "--log", "Harmless"}, {"Pump"});
        }
    }
    EXPECT_GE(arrived, 10) << "too much is refused";
    EXPECT_LE(arrived, static_cast<int>(corpus.size()) - 20) << "nothing was refused";
}

TEST_P(HostileText, AsALabelArrivesAsItIsOrIsRefused) {
    const auto before = project.files();
    for (const char *const plain : corpus) {
        const std::string text = armed(plain);
        const std::string bytes = project.text("Valve.ocl");
        for (const char *const command : {"checkout", "fetch"}) {
            const Ran ran = project.run({command, "--label=" + text}, {"Valve"});
            EXPECT_NE(ran.exit, 0) << command << ' ' << text << ran.out;
            expectHarmless(text, before);
            EXPECT_EQ(project.text("Valve.ocl"), bytes) << text;
        }
    }
}

TEST_P(HostileText, AsANameIsRefusedOrIsAName) {
    good({"checkout", "--lock"}, {"Drives", "Pump", "station"});
    std::string name = "Pump";
    for (const char *const plain : corpus) {
        const std::string text = armed(plain);
        const Ran ran = project.run({"rename"}, {name, text});
        EXPECT_FALSE(fs::exists(proof)) << text;
        if (ran.exit == 0) {
            name = text;
        }
        EXPECT_TRUE(project.archive().files().contains(name + ".ocl")) << text << ran.out << ran.err;
        EXPECT_TRUE(fs::exists(project.file(name + ".ocl"))) << text;
        EXPECT_EQ(project.archive().files().size(), 4U) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Tools, HostileText, testing::Values("RCS", "CVS", "Subversion", "Git", "Mercurial"),
                         [](const auto &row) { return std::string(row.param); });

} // namespace
