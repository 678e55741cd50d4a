#include "apps/orchard-cm/toolcheck/SetCheck.h"

#include "apps/orchard-cm/toolcheck/KnownKeys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace orchard_cm;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// A set in which nothing is wrong.
std::vector<SetEntry> goodSet() {
    std::vector<SetEntry> entries;
    for (const KnownKey &key : knownKeys()) {
        if (key.kind == KeyKind::command) {
            entries.push_back({std::string(key.name), "tool \"$UnitPath\"", "set.toml:1:1"});
        }
    }
    for (const auto &[key, value] :
         {std::pair("PostConnectToCMRepository", ""), std::pair("ReadOnly", "-r"), std::pair("ReadWrite", "-w"),
          std::pair("OperationErrorPattern", "^tool: "), std::pair("MultiRecordDelimiter", "\\n"),
          std::pair("ListArchiveItsWorkingFile", "^(.*)$"), std::pair("RefusedInLog", "\""),
          std::pair("RefusedInLabel", "\"")}) {
        entries.push_back({key, value, "set.toml:1:1"});
    }
    return entries;
}

std::vector<SetEntry> with(std::vector<SetEntry> entries, const std::string &key, const std::string &value) {
    std::erase_if(entries, [&](const SetEntry &entry) { return entry.key == key; });
    entries.push_back({key, value, "set.toml:9:1"});
    return entries;
}

std::vector<SetEntry> without(std::vector<SetEntry> entries, const std::string &key) {
    std::erase_if(entries, [&](const SetEntry &entry) { return entry.key == key; });
    return entries;
}

std::string onlyText(const std::vector<SetEntry> &entries, const std::string &key) {
    const auto findings = checkSet(entries);
    EXPECT_THAT(findings, SizeIs(1));
    if (findings.size() != 1) {
        return {};
    }
    EXPECT_EQ(findings[0].key, key);
    return findings[0].text;
}

} // namespace

TEST(SetCheck, FindsNothingInAGoodSet) { EXPECT_THAT(checkSet(goodSet()), IsEmpty()); }

TEST(SetCheck, FindsEachMissingCommand) {
    for (const KnownKey &key : knownKeys()) {
        if (key.kind == KeyKind::command && key.name != "ConnectToCMRepository" && key.name != "ListArchive") {
            EXPECT_THAT(onlyText(without(goodSet(), std::string(key.name)), std::string(key.name)),
                        HasSubstr("missing"));
        }
    }
}
TEST(SetCheck, TakesAnEmptyCommandAsTheSetsWordThatTheToolCannotDoIt) {
    EXPECT_THAT(checkSet(with(goodSet(), "Rename", "")), IsEmpty());
}
TEST(SetCheck, DoesNotAskForLocks) { EXPECT_THAT(checkSet(without(goodSet(), "LockItem")), IsEmpty()); }
TEST(SetCheck, FindsAConnectThatNeverSucceeds) {
    EXPECT_THAT(onlyText(without(goodSet(), "PostConnectToCMRepository"), "PostConnectToCMRepository"),
                HasSubstr("may be empty"));
}
TEST(SetCheck, FindsAPatternThatIsNoneWithItsPlace) {
    const auto findings = checkSet(with(goodSet(), "HeaderItsVersion", "Rev(ision"));
    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_THAT(findings[0].text, HasSubstr("at character 10"));
    EXPECT_EQ(findings[0].place, "set.toml:9:1");
}
TEST(SetCheck, FindsAPatternWithoutAGroup) {
    EXPECT_THAT(onlyText(with(goodSet(), "HeaderItsLocker", "Locker: \\w+"), "HeaderItsLocker"),
                HasSubstr("no group"));
    EXPECT_THAT(checkSet(with(goodSet(), "ListArchiveItsMode", "locked")), IsEmpty()) << "which needs none";
}
TEST(SetCheck, FindsAPatternThatMatchesAnything) {
    EXPECT_THAT(onlyText(with(goodSet(), "OperationErrorPattern", "error|"), "OperationErrorPattern"),
                HasSubstr("matches even an empty text"));
}
TEST(SetCheck, TakesAnEmptyPatternForNone) {
    EXPECT_THAT(checkSet(with(goodSet(), "HeaderItsLocker", "")), IsEmpty());
}
TEST(SetCheck, FindsAConditionalThatNothingCloses) {
    for (const char *const open :
         {"tool ($label ? -r$label \"$UnitPath\"", "tool (x ? y", "(?", "tool (x ? y) a:b"}) {
        const auto findings = checkSet(with(goodSet(), "CheckIn", open));
        ASSERT_THAT(findings, SizeIs(1)) << open;
        EXPECT_THAT(findings[0].text, HasSubstr("no closing \")\""));
        EXPECT_EQ(findings[0].place, "set.toml:9:1");
    }
    const auto piece = with(with(goodSet(), "CheckIn", "tool $Piece"), "Piece", "($label ? -r$label");
    EXPECT_THAT(checkSet(piece), SizeIs(1));
    for (const char *const whole : {"tool (a ? b : c )", "tool ? (a)", "tool (a) ?)", "tool a?", "tool (a"}) {
        EXPECT_THAT(checkSet(with(goodSet(), "CheckIn", whole)), IsEmpty()) << whole;
    }
    EXPECT_THAT(checkSet(with(goodSet(), "Repository", "(a ? b")), IsEmpty()) << "no command";
}
TEST(SetCheck, FindsARedirectionThatNamesAnotherFileThanItsAuthorMeant) {
    for (const char *const value :
         {"tool 2>&1", "tool >&2", "tool >>log", "tool 2>/dev/null", "sh -c 'tool 2>&1'"}) {
        for (const char *const key : {"History", "AddMember_WithoutCheckOutCheckInDirectory"}) {
            const auto findings = checkSet(with(goodSet(), key, value));
            ASSERT_THAT(findings, SizeIs(1)) << value;
            EXPECT_EQ(findings[0].key, key);
            EXPECT_THAT(findings[0].text, HasSubstr("is the name of the file for its output")) << value;
        }
    }
    EXPECT_THAT(checkSet(with(goodSet(), "History", "tool > \"$targetDir/log\"")), IsEmpty());
    EXPECT_THAT(checkSet(with(goodSet(), "OperationErrorPattern", "^tool2>& ")), IsEmpty());
}
TEST(SetCheck, FindsAListingThatNothingReads) {
    EXPECT_THAT(onlyText(without(goodSet(), "MultiRecordDelimiter"), "MultiRecordDelimiter"),
                HasSubstr("listing of the archive is empty"));
    EXPECT_THAT(checkSet(with(without(goodSet(), "MultiRecordDelimiter"), "ListArchive", "")), IsEmpty());
}
TEST(SetCheck, FindsAKeyThatNothingReadsAndWhatMayBeMeant) {
    EXPECT_THAT(onlyText(with(goodSet(), "ChekOut", "x"), "ChekOut"), HasSubstr("did you mean 'CheckOut'?"));
}
TEST(SetCheck, TakesAKeyThatATemplateNamesForAPieceOfIt) {
    EXPECT_THAT(checkSet(with(with(goodSet(), "Piece", "x"), "CheckOut", "tool ${piece}")), IsEmpty());
}
TEST(SetCheck, FindsValuesThatMeanNothing) {
    EXPECT_THAT(onlyText(with(goodSet(), "CMSaveOnCheckOut", "Yse"), "CMSaveOnCheckOut"), HasSubstr("'Yse'"));
    EXPECT_THAT(onlyText(with(goodSet(), "CMChildThreadTimeOut", "5 min"), "CMChildThreadTimeOut"),
                HasSubstr("integer"));
    EXPECT_THAT(onlyText(with(goodSet(), "AskOnCheckoutReadWrite", "maybe"), "AskOnCheckoutReadWrite"),
                HasSubstr("'Yes', 'No'"));
    EXPECT_THAT(checkSet(with(goodSet(), "AskOnCheckoutReadWrite", "no")), IsEmpty());
}

TEST(Quotes, HoldAPathThatStandsInThem) {
    EXPECT_TRUE(isInQuotes("co -l \"/a b/Pump.ocl\" '/a b/x'", "/a b"));
    EXPECT_FALSE(isInQuotes("co -l /a b/Pump.ocl", "/a b"));
    EXPECT_FALSE(isInQuotes("co \"x\" /a b/Pump.ocl", "/a b"));
    EXPECT_TRUE(isInQuotes("co -l", "/a b"));
}
TEST(Quotes, BeginAnewInACommandWithinOthers) {
    EXPECT_TRUE(isInQuotes(R"q(mv "$(realpath -m -- "/a b/x")" "$(dirname "/a b/y")")q", "/a b"));
    EXPECT_FALSE(isInQuotes(R"q(mv "$(realpath -m -- /a b/x)")q", "/a b"));
    EXPECT_TRUE(isInQuotes(R"q(mv "$(realpath x)/a b")q", "/a b")) << "the outer quotes go on behind it";
    EXPECT_FALSE(isInQuotes(R"q(mv "$(realpath "x")" /a b)q", "/a b"));
    EXPECT_TRUE(isInQuotes(R"q(mv "$( (cd x; realpath y) )/a b")q", "/a b"));
    EXPECT_FALSE(isInQuotes(R"q(mv "$(cd '$(' /a b)")q", "/a b")) << "single quotes hold no command";
    EXPECT_TRUE(isInQuotes(R"q(mv '"' "$(x ')' "/a b")")q", "/a b"));
}
TEST(Quotes, BeginAnewInBackquotes) {
    EXPECT_TRUE(isInQuotes(R"q(mv "`realpath "/a b/x"`/a b")q", "/a b"));
    EXPECT_FALSE(isInQuotes(R"q(mv "`realpath /a b/x`")q", "/a b"));
    EXPECT_TRUE(isInQuotes(R"q(say "\` /a b")q", "/a b"));
}
TEST(Quotes, AreNoneWithinOthersOrBehindABackslash) {
    EXPECT_TRUE(isInQuotes("sh -c 'say \"' \"/a b\"", "/a b"));
    EXPECT_FALSE(isInQuotes("say \\\" /a b", "/a b"));
    EXPECT_FALSE(isInQuotes("say '\\' /a b", "/a b")) << "a backslash in single quotes is none";
}
