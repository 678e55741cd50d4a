// Tests "tool check" on the shipped sets and on broken ones.
#include "tests/tools/Workplace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using tools::Ran;

namespace {

struct ToolCheck : testing::Test {
    tools::Workplace place;
    /// A set of the user, which is read before the installed ones.
    void writeSet(const std::string &text) {
        const fs::path sets = place.directory() / "config" / "orchard" / "toolsets";
        fs::create_directories(sets);
        tools::Workplace::write(sets / "mine.toml", text);
        place.setEnvironment("XDG_CONFIG_HOME", (place.directory() / "config").string());
    }
    Ran check(const std::string &tool) { return place.cm({"--json", "tool", "check", tool}); }
    static std::string textFor(const Ran &ran, const std::string &key) {
        const auto json = ran.json();
        for (const auto &finding : json["findings"]) {
            if (finding["key"] == key) {
                return finding["text"];
            }
        }
        return {};
    }
};

} // namespace

TEST_F(ToolCheck, FindsNothingInTheShippedSets) {
    const auto tools = place.cm({"--json", "tools"}).json();
    for (const auto &tool : tools["tools"]) {
        const Ran ran = check(tool["name"]);
        EXPECT_EQ(ran.exit, 0) << tool["name"] << ran.out << ran.err;
    }
}
TEST_F(ToolCheck, ShowsWhatEachCommandExpandsTo) {
    const Ran ran = place.cm({"tool", "check", "rcs"});
    EXPECT_EQ(ran.exit, 0) << ran.out;
    EXPECT_THAT(ran.out, HasSubstr("CheckIn\n      ci -x,v -j -q -u "));
    EXPECT_THAT(ran.out, HasSubstr("a comment"));
    EXPECT_THAT(ran.out, HasSubstr("No findings."));
}
TEST_F(ToolCheck, FindsWhatIsMissingOrWrongWithItsPlace) {
    writeSet("tool = \"Vault\"\n[ConfigurationManagement.Vault]\n"
             "CheckOut = 'vault get $mode $UnitPath'\n"
             "CheckIn = 'vault put $Piece \"$UnitPath\"'\n"
             "Piece = '-m $nobody'\n"
             "HeaderItsVersion = 'V(ersion'\n"
             "ChekIn = 'x'\n");
    const Ran ran = check("vault");
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(textFor(ran, "AddMember"), HasSubstr("missing"));
    EXPECT_THAT(textFor(ran, "CheckOut"), HasSubstr("outside quotes"));
    EXPECT_THAT(textFor(ran, "CheckIn"), HasSubstr("'$nobody' could not be resolved"));
    EXPECT_THAT(textFor(ran, "CheckIn"), HasSubstr("'$Piece'"));
    EXPECT_THAT(textFor(ran, "HeaderItsVersion"), HasSubstr("not a valid pattern"));
    EXPECT_THAT(textFor(ran, "ChekIn"), HasSubstr("did you mean 'CheckIn'?"));
    EXPECT_THAT(place.cm({"tool", "check", "Vault"}).out, HasSubstr("mine.toml:6:"));
}
TEST_F(ToolCheck, FillsInTheNamesThatAMoveOrRenameKnowsAndNoOthers) {
    const auto commandFor = [](const Ran &ran, const std::string &key) {
        const auto json = ran.json();
        for (const auto &command : json["commands"]) {
            if (command["key"] == key) {
                std::string text = command["command"];
                return text.substr(text.find("_ory") == std::string::npos ? 0 : text.find("_ory"));
            }
        }
        return std::string();
    };
    writeSet("tool = \"Vault\"\n[ConfigurationManagement.Vault]\n"
             "Move = 'mv \"$oldName\"'\n"
             "MoveDirectory = 'mvdir \"$newName\"'\n"
             "Rename = 'rn $none \"$newName\"'\n"
             "RenameDirectory = 'rndir \"$newName\"'\n");
    const Ran good = check("Vault");
    EXPECT_EQ(commandFor(good, "Move"), "_ory//Pump.ocl\"");
    EXPECT_EQ(commandFor(good, "MoveDirectory"), "_ory/elsewhere/Control\"");
    EXPECT_EQ(commandFor(good, "RenameDirectory"), "_ory/New\"");
    EXPECT_EQ(textFor(good, "Move") + textFor(good, "MoveDirectory") + textFor(good, "RenameDirectory"), "");
    EXPECT_THAT(textFor(good, "Rename"), HasSubstr("'$none' could not be resolved"));

    writeSet("tool = \"Vault\"\n[ConfigurationManagement.Vault]\n"
             "Move = 'mv \"$oldDir\"'\n"
             "MoveDirectory = 'mvdir \"$dir\"'\n"
             "Rename = 'rn \"$oldDir\"'\n"
             "RenameDirectory = 'rndir \"$dir\" \"$newdir\"'\n");
    const Ran bad = check("Vault");
    EXPECT_THAT(textFor(bad, "Move"), HasSubstr("'$oldDir' could not be resolved"));
    EXPECT_THAT(textFor(bad, "MoveDirectory"), HasSubstr("'$dir' could not be resolved"));
    EXPECT_THAT(textFor(bad, "Rename"), HasSubstr("'$oldDir' could not be resolved"));
    EXPECT_THAT(textFor(bad, "RenameDirectory"), HasSubstr("'$dir' could not be resolved"))
        << "as the template for files does not ask for it";

    writeSet("tool = \"Vault\"\n[ConfigurationManagement.Vault]\n"
             "Rename = 'rn \"$dir\" \"$olddir\" \"$newdir\" \"$oldName\"'\n"
             "RenameDirectory = 'rndir \"$dir\" \"$oldDir\" \"$newdir\" \"$oldName\"'\n");
    const Ran both = check("Vault");
    EXPECT_EQ(textFor(both, "Rename") + textFor(both, "RenameDirectory"), "");
}
TEST_F(ToolCheck, SuggestsATool) {
    const Ran ran = check("RSC");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["error"]["suggestions"][0], "RCS");
}
TEST_F(ToolCheck, LeavesNothingBehind) {
    place.setEnvironment("TMPDIR", (place.directory() / "tmp").string());
    fs::create_directory(place.directory() / "tmp");
    EXPECT_EQ(check("RCS").exit, 0);
    EXPECT_TRUE(fs::is_empty(place.directory() / "tmp"));
}
