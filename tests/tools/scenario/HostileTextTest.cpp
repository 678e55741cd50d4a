// Tests comments, labels and names that contain commands: none of these is run, and no file appears.
#include "tests/tools/scenario/ScenarioProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <unistd.h>

namespace fs = std::filesystem;
using scenario::Names;
using scenario::Project;
using tools::Ran;

namespace {

/// PROOF means a file that appears if the text is run; it contains no space.
constexpr auto corpus = std::to_array<const char *>({
    ";touch PROOF",
    "x; touch PROOF; x",
    "&touch PROOF",
    "x && touch PROOF",
    "|touch PROOF",
    "$(touch PROOF)",
    "${HOME}",
    "`touch PROOF`",
    "x `touch PROOF` x",
    "'; touch PROOF; '",
    "';touch${IFS}PROOF;'",
    "it's; touch PROOF; it's",
    "\"; touch PROOF; \"",
    "\"$(touch PROOF)\"",
    "'\"; touch PROOF; \"'",
    "\\\"; touch PROOF; \\\"",
    "\\",
    "x\\",
    "x\\\\\"; touch PROOF; \"",
    "x\ntouch PROOF\n",
    "x\r\ntouch PROOF",
    "x > PROOF",
    "2>PROOF",
    "<PROOF",
    "<<EOF",
    "-x",
    "--",
    "-mPROOF",
    "--help",
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
    /// Returns the text with PROOF replaced by another text.
    static std::string armed(std::string text, const std::string &proof) {
        for (auto at = text.find("PROOF"); at != std::string::npos; at = text.find("PROOF", at + proof.size())) {
            text.replace(at, 5, proof);
        }
        return text;
    }
    /// Returns the corpus, each text with its own path, which shows afterwards which text was run.
    std::map<std::string, std::string> armedCorpus() {
        std::map<std::string, std::string> proofs;
        for (const char *const plain : corpus) {
            const std::string proof = (outside / std::to_string(proofs.size())).string();
            proofs.emplace(armed(plain, proof), proof);
        }
        return proofs;
    }
    void expectHarmless(const std::string &text, const std::string &proof) {
        EXPECT_FALSE(fs::exists(proof)) << text;
        EXPECT_EQ(project.files(), before) << text;
    }

    Project project;
    /// Where no blank is in the path.
    fs::path outside = fs::path("/tmp") / ("orchard-proof-" + std::string(GetParam()) + std::to_string(getpid()));
    std::set<std::string> before = project.files();

    void SetUp() override { fs::create_directory(outside); }
    void TearDown() override { fs::remove_all(outside); }
};

/// Returns a comment without the differences between tools: uniform line ends, and none at the end.
std::string asKept(const std::string &text) {
    std::string kept;
    for (const char character : text) {
        if (character != '\r') {
            kept += character;
        }
    }
    return scenario::trimmed(kept);
}

TEST_P(HostileText, AsACommentArrivesAsItIsOrIsRefused) {
    good({"checkout", "--lock"}, {"Pump"});
    int arrived = 0;
    int number = 0;
    for (const auto &[text, proof] : armedCorpus()) {
        project.edit("Pump.ocl", "<description>", "<description>" + std::to_string(++number) + ". ");
        const Ran ran = project.run({"checkin", "--mode", "rw", "--log=" + text}, {"Pump"});
        expectHarmless(text, proof);
        if (ran.exit == 0) {
            EXPECT_EQ(asKept(project.archive().comment("Pump.ocl")), asKept(project.archive().asArchived(text)));
            ++arrived;
        } else {
            EXPECT_FALSE(ran.err.empty()) << text << ": nobody was told";
        }
    }
    EXPECT_EQ(project.archive().versions("Pump.ocl"), 1 + arrived)
        << "a comment was refused, but not its check in";
    EXPECT_GE(arrived, 15) << "too much is refused";
    EXPECT_LE(arrived, static_cast<int>(corpus.size()) - 15) << "nothing was refused";
}

// None of them is a label that a version has.
TEST_P(HostileText, AsALabelIsRefused) {
    const std::string bytes = project.text("Valve.ocl");
    for (const std::string command : {"checkout", "fetch"}) {
        std::vector<std::string> texts; // a batch has one line for each
        std::string lines;
        for (const auto &[text, proof] : armedCorpus()) {
            if (text.find('\n') != std::string::npos) {
                const Ran ran = project.run({command, "--label=" + text}, {"Valve"});
                EXPECT_NE(ran.exit, 0) << command << ' ' << text << ran.out;
            } else {
                texts.push_back(text);
                lines += command + " " + tools::quoted("--label=" + text) + " -- Valve\n";
            }
        }
        const std::set<std::size_t> failed = project.failedLines(lines);
        for (std::size_t line = 0; line < texts.size(); ++line) {
            EXPECT_TRUE(failed.contains(line + 1)) << command << ' ' << texts[line];
        }
        for (const auto &[text, proof] : armedCorpus()) {
            expectHarmless(text, proof);
        }
        EXPECT_EQ(project.text("Valve.ocl"), bytes) << command;
        EXPECT_FALSE(project.isWritable("Valve.ocl")) << command;
    }
}

// A name holds no slash, so the file that must not appear would do so in the directory where the text is run.
TEST_P(HostileText, AsANameIsRefusedOrIsAName) {
    const auto appeared = [this] {
        for (const auto &entry : fs::recursive_directory_iterator(project.directory())) {
            if (entry.path().filename().string().starts_with("orchard-proof")) {
                return true;
            }
        }
        return false;
    };
    good({"checkout", "--lock"}, {"Drives", "Pump", "station"});
    std::string name = "Pump";
    int renamed = 0;
    for (const char *const plain : corpus) {
        const std::string text = armed(plain, "orchard-proof");
        const Ran ran = project.run({"rename"}, {name, text});
        EXPECT_FALSE(appeared()) << text;
        if (ran.exit == 0) {
            name = text;
            ++renamed;
            EXPECT_TRUE(project.archive().files().contains(name + ".ocl")) << text << ran.out << ran.err;
        } else {
            EXPECT_FALSE(ran.err.empty()) << text << ": nobody was told";
        }
        ASSERT_TRUE(fs::exists(project.file(name + ".ocl"))) << text << ran.out << ran.err;
    }
    EXPECT_GE(renamed, 5) << "too much is refused";
    EXPECT_THAT(project.archive().files(),
                testing::UnorderedElementsAre("Drives.osb", name + ".ocl", "Valve.ocl", "station.ory"));
}

INSTANTIATE_TEST_SUITE_P(Tools, HostileText, testing::Values("RCS", "CVS", "Subversion", "Git", "Mercurial"),
                         [](const auto &row) { return std::string(row.param); });

} // namespace
