// A process reads its property sets once, so this test is a separate program, whose sets exist before the first
// test.
#include "CM/host/SPString.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "orchard/model/Workspace.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class StandardSets : public testing::Test {
  protected:
    /// Reads a broken set, and a set with a broken pattern.
    StandardSets() {
        static const support::TemporaryDirectory share;
        static const bool isRead = [] {
            share.write("toolsets/broken.toml", "tool = \n");
            share.write("toolsets/rcs.toml",
                        "tool = 'RCS'\n[ConfigurationManagement.RCS]\nOperationErrorPattern = '^co: (err'\n");
            setenv("ORCHARD_SHARE", share.path().c_str(), 1);
            setenv("XDG_CONFIG_HOME", share.path().c_str(), 1);
            orchard::setDialogDriver(&reader);
            static_cast<void>(orchard::Workspace::instance()); // reports patterns from now on
            return find("OperationErrorPattern") != nullptr;
        }();
        EXPECT_TRUE(isRead);
        patterns = share / "toolsets/rcs.toml";
        orchard::setDialogDriver(&user);
    }
    ~StandardSets() override { orchard::setDialogDriver(nullptr); }

    static IProperty *find(const char *key) {
        return orchard::findInstalledProperty("ConfigurationManagement", "RCS", key);
    }

    static inline orchard::ScriptedDialogDriver reader; ///< receives what the first look-up reports
    orchard::ScriptedDialogDriver user;
    std::string patterns; ///< the file of the set with the pattern
};

TEST_F(StandardSets, ABrokenSetIsReportedAtTheFirstLookUp) {
    ASSERT_EQ(reader.notices().size(), 1U);
    EXPECT_THAT(reader.notices()[0].text.str(), HasSubstr("broken.toml:1:"));
    EXPECT_EQ(reader.notices()[0].icon, CIcon::Kind::warning);
    EXPECT_NE(find("OperationErrorPattern"), nullptr);
    EXPECT_TRUE(user.notices().empty()) << "once for the process";
}

TEST_F(StandardSets, ABrokenSetIsLeftOut) {
    std::vector<std::string> names;
    for (const auto &set : orchard::installedPropertySets()) {
        names.push_back(set.name());
    }
    EXPECT_THAT(names, ElementsAre("RCS"));
}

TEST_F(StandardSets, AMissingPropertyIsNull) { EXPECT_EQ(find("Missing"), nullptr); }

TEST_F(StandardSets, ABadPatternIsReportedOnceWithTheFileAndLineOfItsProperty) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SPString("co: error").m(find("OperationErrorPattern")->getValue(), "i"), 0);
    }
    ASSERT_EQ(user.notices().size(), 1U);
    EXPECT_THAT(user.notices()[0].text.str(),
                HasSubstr("property \"OperationErrorPattern\" of RCS (" + patterns + ":3:25)"));
    EXPECT_THAT(user.notices()[0].text.str(), HasSubstr("at character 10"));
}

} // namespace
