#include "orchard/change/ChangeDecision.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <vector>

using enum orchard::Found;
using orchard::Decision;
using orchard::Findings;
using orchard::Found;
using testing::ElementsAreArray;

namespace {

enum class Who { tool, host, crash, crashOfTool };

struct MoveRow {
    const char *name;
    Who who;
    std::vector<Found> files;
    bool finish;
    bool begun;
};

void PrintTo(const MoveRow &row, std::ostream *out) { *out << row.name; }

struct Moves : testing::TestWithParam<MoveRow> {};

TEST_P(Moves, AreDecidedByWhatIsFound) {
    const MoveRow &row = GetParam();
    Findings findings;
    findings.byTool = row.who == Who::tool || row.who == Who::crashOfTool;
    findings.goesOn = row.who == Who::host;
    for (const Found found : row.files) {
        findings.files.push_back({found});
    }
    const Decision decision = decide(findings);
    EXPECT_EQ(decision.finish, row.finish);
    EXPECT_EQ(decision.begun, row.begun);
}

INSTANTIATE_TEST_SUITE_P(
    ChangeDecision, Moves,
    testing::Values(
        MoveRow{"AToolThatHasMovedAll", Who::tool, {newPlace, newPlace}, true, true},
        MoveRow{"AToolThatHasMovedSome", Who::tool, {newPlace, oldPlace}, true, true},
        MoveRow{"AToolThatHasMovedNothing", Who::tool, {oldPlace, oldPlace}, false, false},
        MoveRow{"AToolThatHasCopied", Who::tool, {both}, true, true},
        MoveRow{"AToolThatHasRenamedInADirectoryThatHasNotMoved", Who::tool, {renamed, oldPlace}, false, false},
        MoveRow{"AToolThatHasMovedADirectoryWithoutTheRename", Who::tool, {carried, newPlace}, true, true},
        MoveRow{"AToolThatHasLostTheOnlyFile", Who::tool, {nowhere}, false, false},
        MoveRow{"AToolThatHasLostOneAndMovedAnother", Who::tool, {nowhere, newPlace}, true, true},
        MoveRow{"AToolThatMetAnotherFile", Who::tool, {blocked}, false, false},
        MoveRow{"AToolThatMetAnotherFileBesideOneThatHasArrived", Who::tool, {blocked, newPlace}, true, true},
        MoveRow{"AToolWithoutFiles", Who::tool, {}, true, false},
        MoveRow{"TheHostThatBegins", Who::host, {oldPlace, oldPlace}, true, false},
        MoveRow{"TheHostAfterSomebodyElse", Who::host, {newPlace, oldPlace}, true, true},
        MoveRow{"TheHostThatMeetsAnotherFile", Who::host, {blocked, oldPlace}, false, false},
        MoveRow{"TheHostThatMeetsACopy", Who::host, {both, oldPlace}, false, false},
        MoveRow{"TheHostWhoseFileIsGone", Who::host, {nowhere}, false, false},
        MoveRow{"TheHostWithoutFiles", Who::host, {}, true, false},
        MoveRow{"ACrashBeforeTheFirstStep", Who::crash, {oldPlace, oldPlace}, false, false},
        MoveRow{"ACrashBetweenTwoFiles", Who::crash, {newPlace, oldPlace}, true, true},
        MoveRow{"ACrashBetweenADirectoryAndTheFileInIt", Who::crash, {carried, newPlace}, true, true},
        MoveRow{"ACrashBeforeTheFilesOfTheOwners", Who::crash, {newPlace, newPlace}, true, true},
        MoveRow{"ACrashOfWhatMovesNoFile", Who::crash, {}, true, false},
        MoveRow{"ACrashBeforeTheTool", Who::crashOfTool, {oldPlace}, false, false},
        MoveRow{"ACrashAfterTheTool", Who::crashOfTool, {newPlace}, true, true},
        MoveRow{"ACrashBetweenTheToolsTwoCommands", Who::crashOfTool, {renamed, oldPlace}, false, false}),
    [](const auto &row) { return std::string(row.param.name); });

struct RemovalRow {
    const char *name;
    Who who;
    std::vector<Findings::File> files; ///< of three parts, the last of which has no file
    bool textWritten;
    bool finish;
    std::vector<bool> parts;
};

void PrintTo(const RemovalRow &row, std::ostream *out) { *out << row.name; }

struct Removals : testing::TestWithParam<RemovalRow> {};

TEST_P(Removals, AreDecidedByWhatIsFound) {
    const RemovalRow &row = GetParam();
    Findings findings;
    findings.removes = true;
    findings.byTool = row.who == Who::tool || row.who == Who::crashOfTool;
    findings.goesOn = row.who == Who::host;
    findings.textWritten = row.textWritten;
    findings.parts = 3;
    findings.files = row.files;
    const Decision decision = decide(findings);
    EXPECT_EQ(decision.finish, row.finish);
    if (row.finish) {
        EXPECT_THAT(decision.parts, ElementsAreArray(row.parts));
    }
}

const std::vector<bool> all{true, true, true};

INSTANTIATE_TEST_SUITE_P(
    ChangeDecision, Removals,
    testing::Values(
        RemovalRow{"AToolThatHasRemovedAll", Who::tool, {{nowhere, 0}, {nowhere, 1}}, false, true, all},
        RemovalRow{"AToolThatHasRemovedOneUnit",
                   Who::tool,
                   {{nowhere, 0}, {oldPlace, 1}},
                   false,
                   true,
                   {true, false, true}},
        RemovalRow{"AToolThatHasRemovedAFileOfEach",
                   Who::tool,
                   {{nowhere, 0}, {oldPlace, 0}, {nowhere, 1}},
                   false,
                   true,
                   all},
        RemovalRow{"AToolThatHasRemovedNothing", Who::tool, {{oldPlace, 0}, {oldPlace, 1}}, false, false, {}},
        RemovalRow{"TheHostThatBegins", Who::host, {{oldPlace, 0}, {oldPlace, 1}}, false, true, all},
        RemovalRow{"ACrashBeforeTheFirstStep", Who::crash, {{oldPlace, 0}, {oldPlace, 1}}, false, false, {}},
        RemovalRow{
            "ACrashBetweenTheFilesOfTheOwners", Who::crash, {{oldPlace, 0}, {oldPlace, 1}}, true, true, all},
        RemovalRow{"ACrashBetweenTwoFiles", Who::crash, {{nowhere, 0}, {oldPlace, 1}}, true, true, all},
        RemovalRow{
            "ACrashOfTheTool", Who::crashOfTool, {{nowhere, 0}, {oldPlace, 1}}, false, true, {true, false, true}}),
    [](const auto &row) { return std::string(row.param.name); });

} // namespace
