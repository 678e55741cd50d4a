// The sets of the process are read once, so all that is to be seen of them is one test.
#include "CM/host/SPString.h"
#include "orchard/messages/ScriptedUser.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

TEST(StandardSets, TellBrokenSetsAndNameThePropertyOfABadPattern) {
    std::string name = std::filesystem::temp_directory_path() / "orchard-standard-XXXXXX";
    const std::filesystem::path root = mkdtemp(name.data());
    std::filesystem::create_directories(root / "toolsets");
    std::ofstream(root / "toolsets" / "broken.toml") << "tool = \n";
    std::ofstream(root / "toolsets" / "rcs.toml")
        << "tool = 'RCS'\n[ConfigurationManagement.RCS]\nOperationErrorPattern = '^co: (err'\n";
    setenv("ORCHARD_SHARE", root.c_str(), 1);
    setenv("XDG_CONFIG_HOME", root.c_str(), 1);
    orchard::ScriptedUser user;
    orchard::setUserInterface(&user);

    IProperty *const pattern =
        orchard::findInstalledProperty("ConfigurationManagement", "RCS", "OperationErrorPattern");
    ASSERT_NE(pattern, nullptr);
    EXPECT_EQ(orchard::findInstalledProperty("ConfigurationManagement", "RCS", "Missing"), nullptr);
    ASSERT_EQ(user.messages().size(), 1U);
    EXPECT_NE(user.messages()[0].text.Find("broken.toml:1:"), -1) << user.messages()[0].text;
    EXPECT_EQ(user.messages()[0].kind, orchard::MessageKind::warning);

    int sets = 0;
    for (const auto &set : orchard::installedPropertySets()) {
        EXPECT_EQ(set.name(), "RCS");
        ++sets;
    }
    EXPECT_EQ(sets, 1);

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SPString("co: error").m(pattern->getValue(), "i"), 0);
    }
    ASSERT_EQ(user.messages().size(), 2U) << "once for the pattern";
    const CString &text = user.messages()[1].text;
    EXPECT_NE(text.Find("property \"OperationErrorPattern\" of RCS (" + (root / "toolsets" / "rcs.toml").string() +
                        ":3:25)"),
              -1)
        << text;
    EXPECT_NE(text.Find("at character 10"), -1) << text;

    orchard::setUserInterface(nullptr);
    std::filesystem::remove_all(root);
}

} // namespace
