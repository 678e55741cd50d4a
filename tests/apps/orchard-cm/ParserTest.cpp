#include "apps/orchard-cm/options/Parser.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orchard_cm;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Keeps what the parser bound.
class Fetch : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--lock", lock);
        app.add_option("UNIT", units)->required();
    }
    ExitCode run(Context & /*context*/) override { return ExitCode::done; }
    bool lock = false;
    std::vector<std::string> units;
};

constexpr CommandEntry commands[] = {
    {"fetch", "Fetches units", []() -> std::unique_ptr<Command> { return std::make_unique<Fetch>(); }, true},
    {"new", "Makes a project", []() -> std::unique_ptr<Command> { return std::make_unique<Fetch>(); }, false},
};

Invocation parsed(const std::vector<std::string> &words) { return parseCommandLine(words, commands); }

Failure usageOf(const std::vector<std::string> &words, bool batch = false) {
    try {
        batch ? parseBatchLine(words, commands) : parseCommandLine(words, commands);
    } catch (const Failure &failure) {
        return failure;
    }
    ADD_FAILURE() << "parsed";
    return {ExitCode::done, ""};
}

} // namespace

TEST(CommandLine, BindsTheOptionsOfTheCommand) {
    const auto invocation = parsed({"fetch", "--lock", "Pump", "Öl Tank"});
    EXPECT_EQ(invocation.name, "fetch");
    const auto &fetch = dynamic_cast<Fetch &>(*invocation.command);
    EXPECT_TRUE(fetch.lock);
    EXPECT_THAT(fetch.units, ElementsAre("Pump", "Öl Tank"));
}

TEST(CommandLine, WaitsForOtherProgramsAsLongAsRequested) {
    EXPECT_EQ(parsed({"fetch", "Pump"}).options.wait, 30U);
    EXPECT_EQ(parsed({"--wait", "0", "fetch", "Pump"}).options.wait, 0U);
    EXPECT_EQ(parsed({"fetch", "Pump", "--wait", "90"}).options.wait, 90U);
    EXPECT_THAT(usageOf({"--wait", "-1", "fetch", "Pump"}).what(), HasSubstr("--wait"));
    EXPECT_THAT(usageOf({"--wait", "soon", "fetch", "Pump"}).what(), HasSubstr("--wait"));
    EXPECT_THAT(usageOf({"--wait", "5", "fetsh"}).what(), HasSubstr("there is no command 'fetsh'"));
}

TEST(CommandLine, IsKeptForThoseWhoWaitForTheProgram) {
    EXPECT_EQ(parsed({"-p", "a.orp", "fetch", "Pump"}).options.commandLine, "orchard-cm -p a.orp fetch Pump");
}

TEST(CommandLine, TakesGlobalOptionsOnEitherSideOfTheCommand) {
    for (const auto &words :
         {std::vector<std::string>{"-p", "a.orp", "--json", "--yes", "--trace", "--log", "l", "fetch", "X"},
          std::vector<std::string>{"fetch", "X", "-p", "a.orp", "--json", "--yes", "--trace", "--log", "l"}}) {
        const auto options = parsed(words).options;
        EXPECT_EQ(options.project, "a.orp");
        EXPECT_TRUE(options.json);
        EXPECT_EQ(options.answer, Answer::yes);
        EXPECT_TRUE(options.trace);
        EXPECT_EQ(options.logFile, "l");
    }
}
TEST(CommandLine, KnowsThreeAnswersAndOtherwiseAsks) {
    EXPECT_EQ(parsed({"fetch", "X"}).options.answer, Answer::ask);
    EXPECT_EQ(parsed({"--no", "fetch", "X"}).options.answer, Answer::no);
    EXPECT_EQ(parsed({"fetch", "--yes-to-all", "X"}).options.answer, Answer::yesToAll);
}
TEST(CommandLine, RefusesTwoAnswers) {
    EXPECT_EQ(usageOf({"--yes", "--no", "fetch", "X"}).code(), ExitCode::usage);
}
TEST(CommandLine, SuggestsACommandForAMistypedOne) {
    const auto failure = usageOf({"-p", "a.orp", "ftech", "X"});
    EXPECT_EQ(failure.code(), ExitCode::usage);
    EXPECT_STREQ(failure.what(), "there is no command 'ftech'");
    EXPECT_THAT(failure.suggestions(), ElementsAre("fetch"));
}
TEST(CommandLine, NamesTheOptionThatItDoesNotKnow) {
    EXPECT_THAT(usageOf({"fetch", "--lokc", "X"}).what(), HasSubstr("--lokc"));
}
TEST(CommandLine, AsksForACommandAndNamesAll) {
    EXPECT_EQ(usageOf({}).code(), ExitCode::usage);
    EXPECT_STREQ(usageOf({}).what(), "no command is given; the commands are fetch, new");
    EXPECT_STREQ(usageOf({"--json"}).what(), usageOf({}).what());
    EXPECT_STREQ(usageOf({}, true).what(), "no command is given; the commands are fetch");
}
TEST(CommandLine, TellsHowAWordThatBeginsWithADashIsGiven) {
    EXPECT_STREQ(usageOf({"fetch", "-x"}).what(),
                 "'fetch' has no option -x; put '--' before a value that begins with '-'");
}
TEST(CommandLine, AsksForWhatACommandRequires) { EXPECT_THAT(usageOf({"fetch"}).what(), HasSubstr("UNIT")); }
TEST(CommandLine, ShowsTheHelpOfACommand) {
    const auto invocation = parsed({"fetch", "--help"});
    EXPECT_EQ(invocation.command, nullptr);
    EXPECT_THAT(invocation.text, HasSubstr("--lock"));
}
TEST(CommandLine, ShowsTheGeneralHelpAndTheVersion) {
    EXPECT_THAT(parsed({"--help"}).text, HasSubstr("Fetches units"));
    EXPECT_THAT(parsed({"--version"}).text, testing::StartsWith("orchard-cm "));
}
TEST(CommandLine, TakesNamesThatBeginWithADashBehindTwoDashes) {
    const auto invocation = parsed({"fetch", "--", "-odd"});
    EXPECT_THAT(dynamic_cast<Fetch &>(*invocation.command).units, ElementsAre("-odd"));
}
TEST(CommandLine, IsAnsweredAsJsonAlsoWhenItCannotBeParsed) {
    EXPECT_TRUE(wantsJson({"ftech", "--json"}));
    EXPECT_FALSE(wantsJson({"ftech"}));
    EXPECT_FALSE(wantsJson({"fetch", "--", "--json"}));
}
TEST(BatchLine, TakesACommandWithItsOwnOptionsOnly) {
    EXPECT_EQ(parseBatchLine({"fetch", "X"}, commands).name, "fetch");
    EXPECT_EQ(usageOf({"fetch", "X", "--json"}, true).code(), ExitCode::usage);
}
TEST(BatchLine, RefusesACommandThatOpensAnotherProject) {
    EXPECT_STREQ(usageOf({"new", "X"}, true).what(), "'new' can't be used in a batch");
}
TEST(BatchLine, SuggestsACommandForAMistypedOne) {
    EXPECT_STREQ(usageOf({"fech", "X"}, true).what(), "there is no command 'fech' in a batch");
}
