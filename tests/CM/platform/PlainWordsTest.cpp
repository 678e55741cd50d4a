#include "CM/platform/ChildProcess.h"

#include "CM/platform/PlainWords.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using platform::plainWords;
using testing::ElementsAre;
using testing::Optional;

struct Command {
    const char *name;
    std::string_view text;
};

void PrintTo(const Command &command, std::ostream *stream) { *stream << command.text; }

std::string nameOf(const testing::TestParamInfo<Command> &info) { return info.param.name; }

using namespace std::string_view_literals;

TEST(PlainWords, SplitsAtBlanksAndTabs) {
    EXPECT_THAT(plainWords(" co  -q\t-l unit.osb "), Optional(ElementsAre("co", "-q", "-l", "unit.osb")));
}

TEST(PlainWords, TakesQuotesOffAndKeepsWhatTheyHold) {
    EXPECT_THAT(plainWords(R"(co "a b" 'c  d')"), Optional(ElementsAre("co", "a b", "c  d")));
}

TEST(PlainWords, JoinsPiecesWithoutABlankBetween) {
    EXPECT_THAT(plainWords(R"(co -m"a b"'c'd)"), Optional(ElementsAre("co", "-ma bcd")));
}

TEST(PlainWords, KeepsAnEmptyQuotedWord) {
    EXPECT_THAT(plainWords(R"(ci -m"" '' "")"), Optional(ElementsAre("ci", "-m", "", "")));
}

TEST(PlainWords, KeepsMetacharactersInSingleQuotes) {
    EXPECT_THAT(plainWords("co '$a`b\\c\"*?[#~;|&<>()\n'"),
                Optional(ElementsAre("co", "$a`b\\c\"*?[#~;|&<>()\n")));
}

TEST(PlainWords, KeepsHarmlessMetacharactersInDoubleQuotes) {
    EXPECT_THAT(plainWords("co \"'*?[#~;|&<>(){}!\n\""), Optional(ElementsAre("co", "'*?[#~;|&<>(){}!\n")));
}

TEST(PlainWords, KeepsABackslashInDoubleQuotesThatEscapesNothing) {
    EXPECT_THAT(plainWords(R"(co "C:\dir\file")"), Optional(ElementsAre("co", R"(C:\dir\file)")));
}

TEST(PlainWords, TakesQuotesInsideTheProgramsName) {
    EXPECT_THAT(plainWords(R"("/opt/my tools/co" x)"), Optional(ElementsAre("/opt/my tools/co", "x")));
}

TEST(PlainWords, TakesEqualSignsBehindTheProgram) {
    EXPECT_THAT(plainWords("git --depth=1 a=b"), Optional(ElementsAre("git", "--depth=1", "a=b")));
}

TEST(PlainWords, TakesHashesTildesAndBangsInsideAWord) {
    EXPECT_THAT(plainWords("git show HEAD~1 a#b a!b !"),
                Optional(ElementsAre("git", "show", "HEAD~1", "a#b", "a!b", "!")));
}

TEST(PlainWords, TakesReservedWordsAndBuiltinsBehindTheProgram) {
    EXPECT_THAT(plainWords("git if cd export done"), Optional(ElementsAre("git", "if", "cd", "export", "done")));
}

TEST(PlainWords, TakesAProgramWithABuiltinsNameByItsPath) {
    EXPECT_THAT(plainWords("/bin/echo hi"), Optional(ElementsAre("/bin/echo", "hi")));
    EXPECT_THAT(plainWords("./test"), Optional(ElementsAre("./test")));
}

TEST(PlainWords, TakesTrueAndFalseOnlyAlone) {
    EXPECT_THAT(plainWords("true"), Optional(ElementsAre("true")));
    EXPECT_THAT(plainWords("false"), Optional(ElementsAre("false")));
    EXPECT_FALSE(plainWords("true --version"));
}

TEST(PlainWords, TakesBytesThatAreNoAscii) {
    EXPECT_THAT(plainWords("co \xC3\xA4.osb \xFF\r"), Optional(ElementsAre("co", "\xC3\xA4.osb", "\xFF\r")));
}

class NeedsShell : public testing::TestWithParam<Command> {};

TEST_P(NeedsShell, SoHasNoPlainWords) { EXPECT_FALSE(plainWords(GetParam().text)); }

INSTANTIATE_TEST_SUITE_P(
    Commands, NeedsShell,
    testing::Values(Command{"Nothing", ""}, Command{"BlanksOnly", " \t "}, Command{"Redirection", "co x > y"},
                    Command{"RedirectionWithoutBlanks", "co x>y"}, Command{"Input", "co < x"},
                    Command{"Pipe", "co|cat"}, Command{"List", "co; ci"}, Command{"And", "co && ci"},
                    Command{"Background", "co &"}, Command{"Newline", "co\nci"},
                    Command{"ClosingNewline", "co x\n"}, Command{"Subshell", "(co)"}, Command{"Variable", "co $x"},
                    Command{"VariableInDoubleQuotes", "co \"$x\""}, Command{"Backquote", "co `x`"},
                    Command{"BackquoteInDoubleQuotes", "co \"`x`\""}, Command{"Backslash", "co a\\ b"},
                    Command{"EscapedQuoteInDoubleQuotes", R"(co "a\"b")"},
                    Command{"EscapedBackslashInDoubleQuotes", R"(co "a\\b")"},
                    Command{"EscapedDollarInDoubleQuotes", R"(co "a\$b")"},
                    Command{"EscapedNewlineInDoubleQuotes", "co \"a\\\nb\""}, Command{"Star", "co *.osb"},
                    Command{"QuestionMark", "co a?b"}, Command{"Bracket", "co [ab]"},
                    Command{"Braces", "co {a,b}"}, Command{"Tilde", "co ~/x"},
                    Command{"TildeBehindEqualSign", "co a=~/x"}, Command{"TildeBehindColon", "co a:~/x"},
                    Command{"Comment", "co x # y"}, Command{"CommentOnly", "#co"}, Command{"Assignment", "A=b co"},
                    Command{"AssignmentOnly", "A=b"}, Command{"QuotedAssignment", "A='b c' co"},
                    Command{"OpenSingleQuote", "co 'a"}, Command{"OpenDoubleQuote", "co \"a"},
                    Command{"BackslashAtTheEndOfADoubleQuote", "co \"a\\"}, Command{"EmptyProgram", "'' x"},
                    Command{"Nul", "co a\0b"sv}, Command{"NulInQuotes", "co 'a\0b'"sv}, Command{"If", "if true"},
                    Command{"Bang", "! co"}, Command{"Brace", "{ co"}, Command{"While", "while co"},
                    Command{"Case", "case x in"}, Command{"Cd", "cd /tmp"}, Command{"QuotedCd", "'cd' /tmp"},
                    Command{"Colon", ":"}, Command{"Dot", ". x"}, Command{"Exec", "exec co"},
                    Command{"Eval", "eval co"}, Command{"Exit", "exit 3"}, Command{"Export", "export A"},
                    Command{"Echo", "echo hi"}, Command{"Printf", "printf x"}, Command{"Pwd", "pwd"},
                    Command{"Test", "test -f x"}, Command{"Kill", "kill 1"}, Command{"Umask", "umask 0"},
                    Command{"Ulimit", "ulimit -f 1"}, Command{"Trap", "trap x 1"}, Command{"Set", "set -e"},
                    Command{"Unset", "unset A"}, Command{"Read", "read a"}, Command{"Wait", "wait"},
                    Command{"Type", "type co"}, Command{"CommandBuiltin", "command co"},
                    Command{"Alias", "alias a=b"}, Command{"Time", "time co"}, Command{"Job", "%1"}),
    nameOf);

// Compares with the shell: what counts as plain words reaches a program exactly as the shell would pass it.
TEST(PlainWords, AgreesWithTheShellOnCommandsMadeAtRandom) {
    constexpr std::string_view pieces = "ab  '''\"\"\"\\\\=~#!:$*-.,^%@+/\t";
    std::mt19937 random(20240229); // NOLINT(cert-msc51-cpp): the same commands in every run
    std::uniform_int_distribution<std::size_t> length(1, 12);
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    int compared = 0;
    for (int attempt = 0; attempt < 1000; ++attempt) {
        std::string command = CHILD " arguments ";
        for (auto count = length(random); count > 0; --count) {
            command += pieces[piece(random)];
        }
        if (const auto words = plainWords(command)) {
            std::string expected;
            for (std::size_t index = 2; index < words->size(); ++index) {
                expected += "<" + (*words)[index] + ">\n";
            }
            // The list operator at the end makes it a command for the shell.
            const auto result = platform::runChild(command + "\n:");
            ASSERT_EQ(result.errors, "") << command;
            ASSERT_EQ(result.output, expected) << command;
            ++compared;
        }
    }
    EXPECT_GT(compared, 100) << "the commands are to show something";
}

} // namespace
