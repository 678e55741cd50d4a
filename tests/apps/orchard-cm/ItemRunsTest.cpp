#include "apps/orchard-cm/operation/ItemRuns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orchard_cm;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void ran(Journal &journal, const std::string &command) {
    journal.runStarted(command);
    journal.runEnded({command, platform::ChildResult::End::exited, 0});
}

} // namespace

TEST(ItemRuns, BelongToTheFileThatTheirCommandNames) {
    Journal journal;
    ran(journal, "co -r /w/Tank.ocl");
    ran(journal, "co -r \"/w/Öl Valve.ocl\"");
    const auto items = runsOfItems({"/w/Pump.ocl", "/w/Tank.ocl", "/w/Öl Valve.ocl"}, journal).items;
    EXPECT_THAT(items[0].runs, IsEmpty());
    EXPECT_THAT(items[1].runs, ElementsAre(&journal.runs()[0]));
    EXPECT_THAT(items[2].runs, ElementsAre(&journal.runs()[1]));
}
TEST(ItemRuns, AreNotTakenByAFileWhoseNameEndsThatOfAnother) {
    Journal journal;
    ran(journal, "co /w/BigPump.ocl");
    const auto items = runsOfItems({"/w/Pump.ocl", "/w/BigPump.ocl"}, journal).items;
    EXPECT_THAT(items[0].runs, IsEmpty());
    EXPECT_EQ(items[1].runs.size(), 1U);
}
TEST(ItemRuns, FollowTheOrderWhereACommandNamesNoFile) {
    Journal journal;
    ran(journal, "fetch one");
    ran(journal, "fetch two");
    const auto items = runsOfItems({"/w/Pump.ocl", "/w/Tank.ocl"}, journal).items;
    EXPECT_THAT(items[0].runs, ElementsAre(&journal.runs()[0]));
    EXPECT_THAT(items[1].runs, ElementsAre(&journal.runs()[1]));
}
TEST(ItemRuns, KnowWhichFilesWereAskedAbout) {
    Journal journal;
    journal.question("Pump.ocl is writable (/w/Pump.ocl)");
    journal.question("Tank.ocl is writable (/w/Tank.ocl)");
    const auto items = runsOfItems({"/w/Pump.ocl", "/w/Valve.ocl", "/w/Tank.ocl"}, journal).items;
    EXPECT_TRUE(items[0].asked);
    EXPECT_FALSE(items[1].asked);
    EXPECT_TRUE(items[2].asked);
}

TEST(ItemRuns, AreNotTakenByAFileWhoseNameBeginsThatOfAnother) {
    Journal journal;
    ran(journal, "co /w/Pump.ocl2");
    ran(journal, "co /w/Pump.ocl");
    const auto items = runsOfItems({"/w/Pump.ocl", "/w/Pump.ocl2"}, journal).items;
    EXPECT_THAT(items[0].runs, ElementsAre(&journal.runs()[1]));
    EXPECT_THAT(items[1].runs, ElementsAre(&journal.runs()[0]));
}
TEST(ItemRuns, GoToTwoFilesOfOneNameInTheirOrder) {
    Journal journal;
    ran(journal, "co \"/w/a/Pump.ocl\"");
    ran(journal, "co \"/w/b/Pump.ocl\"");
    const auto items = runsOfItems({"/w/a/Pump.ocl", "/w/b/Pump.ocl"}, journal).items;
    EXPECT_THAT(items[0].runs, ElementsAre(&journal.runs()[0]));
    EXPECT_THAT(items[1].runs, ElementsAre(&journal.runs()[1]));
}
TEST(ItemRuns, OfOneFileCanBeMany) {
    Journal journal;
    ran(journal, "mv \"/w/Pump.ocl\" x");
    ran(journal, "mvdir \"/w/Pump.ocl\" y");
    const auto items = runsOfItems({"/w/Pump.ocl"}, journal).items;
    EXPECT_THAT(items[0].runs, ElementsAre(&journal.runs()[0], &journal.runs()[1]));
}
TEST(ItemRuns, OfADirectoryAreSharedAndTheFilesBehindItFollowTheirOwn) {
    Journal journal;
    ran(journal, "co \"/w/b\"");
    ran(journal, "add \"/w/b/Tank.ocl\"");
    ran(journal, "ci \"/w/b\"");
    ran(journal, "add \"/w/a/Pump.ocl\"");
    const auto found = runsOfItems({"/w/a/Pump.ocl", "/w/b/Tank.ocl"}, journal);
    EXPECT_THAT(found.items[0].runs, ElementsAre(&journal.runs()[3]));
    EXPECT_THAT(found.items[1].runs, ElementsAre(&journal.runs()[1]));
    EXPECT_THAT(found.shared, ElementsAre(&journal.runs()[0], &journal.runs()[2]));
}
