#include "orchard/change/ChangePlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using orchard::ChangePlan;
using testing::HasSubstr;

namespace {

ChangePlan plan() {
    ChangePlan plan;
    plan.command = "rename 'A b' C";
    plan.toolSteps = {{"/w/u/A.ocl", "/w/u/C.ocl"}};
    plan.directories = {{"/w/u/A", "/w/u/C"}};
    plan.files = {{{"/w/u/A/A.osb", "/w/u/C/C.osb"}, 0, 0}, {{"/lib/x.ocl", "/w/u/x.ocl"}, {}, 0}};
    plan.texts = {{{"/w/u/O.osb", "/w/u/O.osb"}, false, "a\r\n-b\n", "+c\n\nd", {}},
                  {{"/w/u/A/A.osb", "/w/u/C/C.osb"}, true, "", "end\n", {}}};
    plan.mayBeEmpty = {"/w/u/D", "/w/u/D/E"};
    return plan;
}

void expectSame(const ChangePlan &one, const ChangePlan &other) { EXPECT_EQ(one.text("/w"), other.text("/w")); }

TEST(ChangePlan, IsReadAsItWasWritten) {
    ChangePlan read;
    ASSERT_TRUE(read.parse(plan().text("/w"), "/w"));
    expectSame(read, plan());
    EXPECT_EQ(read.texts[0].before, "a\r\n-b\n");
    EXPECT_EQ(read.texts[0].after, "+c\n\nd");
    EXPECT_EQ(read.texts[1].before, "");
    EXPECT_EQ(read.texts[1].to, "/w/u/C/C.osb");
    EXPECT_TRUE(read.texts[1].own);
    EXPECT_EQ(read.files[0].directory, 0U);
    EXPECT_EQ(read.files[1].from, "/lib/x.ocl");
}

TEST(ChangePlan, OfARemovalHasPartsAndTheTextsWithoutThem) {
    ChangePlan removal;
    removal.removes = true;
    removal.parts = 2;
    removal.files = {{{"/w/a", ""}, {}, 0}, {{"/w/b", ""}, {}, 1}};
    removal.texts = {{{"/w/o", "/w/o"}, false, "1\n2\n3\n", "1\n2\n3\n", {{0, 0, 2}, {1, 4, 6}}}};
    ChangePlan read;
    ASSERT_TRUE(read.parse(removal.text("/w"), "/w"));
    expectSame(read, removal);
    EXPECT_EQ(read.files[1].part, 1U);
    EXPECT_EQ(read.texts[0].with({true, false}), "2\n3\n");
    EXPECT_EQ(read.texts[0].with({false, true}), "1\n2\n");
    EXPECT_EQ(read.texts[0].with({true, true}), "2\n");
}

TEST(ChangePlan, FollowsItsProjectToAnotherDirectory) {
    ChangePlan read;
    ASSERT_TRUE(read.parse(plan().text("/w"), "/elsewhere"));
    EXPECT_EQ(read.files[0].from, "/elsewhere/u/A/A.osb");
}

TEST(ChangePlan, ThatIsCutOffAnywhereIsRefused) {
    const std::string text = plan().text("/w");
    for (std::size_t length = 0; length < text.size() - 1; ++length) {
        ChangePlan read;
        EXPECT_FALSE(read.parse(text.substr(0, length), "/w")) << text.substr(0, length);
    }
}

TEST(ChangePlan, WithWhatNoPlanHoldsIsRefused) {
    for (const char *const line :
         {"what", "to x", "with 0", "part 1", "cut 0 0 0", "-x", "removes", "removes x", "file a\nwith 3",
          "file a\npart 7", "text a\n+x\ncut 0 0 9", "text a\n+xxx\ncut 0 2 3\ncut 0 1 2", "end\nmore"}) {
        ChangePlan read;
        EXPECT_FALSE(read.parse("orchard-change 1\n" + std::string(line) + "\nend\n", "/w")) << line;
    }
}

} // namespace
