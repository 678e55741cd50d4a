// The registry: keys and values.
#include "CM/platform/Registry.h"

#include <gmock/gmock.h>

namespace {

using platform::Registry;
using platform::RegistryValue;
using testing::ElementsAre;
using testing::IsEmpty;

RegistryValue text(const char *content) {
    RegistryValue value;
    value.text = content;
    return value;
}

TEST(Registry, ComparesKeysAndNamesWithoutCase) {
    Registry registry;
    registry.setValue(R"(HKEY_LOCAL_MACHINE\Software\Maker)", "ProviderRegKey", text("x"));
    EXPECT_TRUE(registry.hasKey(R"(hkey_local_machine\SOFTWARE\maker)"));
    const auto value = registry.value(R"(hkey_local_machine\SOFTWARE\maker)", "PROVIDERREGKEY");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->text, "x");
}

TEST(Registry, HasNoValueWithoutItsKeyOrItsName) {
    Registry registry;
    registry.setValue("A", "n", text("x"));
    EXPECT_FALSE(registry.value("B", "n"));
    EXPECT_FALSE(registry.value("A", "m"));
    EXPECT_FALSE(registry.value("A", ""));
    EXPECT_THAT(registry.valueNames("B"), IsEmpty());
    EXPECT_FALSE(registry.hasKey("B"));
    EXPECT_FALSE(registry.hasKey(""));
}

TEST(Registry, HasTheKeysOnTheWayToAKey) {
    Registry registry;
    registry.addKey(R"(A\B\C)");
    EXPECT_TRUE(registry.hasKey("A"));
    EXPECT_TRUE(registry.hasKey(R"(A\B)"));
    EXPECT_TRUE(registry.hasKey(R"(A\B\)"));
    EXPECT_FALSE(registry.hasKey(R"(A\B\C\D)"));
    EXPECT_FALSE(registry.hasKey(R"(A\BB)"));
}

TEST(Registry, ListsNamesInTheirOrder) {
    Registry registry;
    for (const char *name : {"z", "", "a"}) {
        registry.setValue("K", name, text(name));
    }
    registry.setValue("K", "Z", text("again"));
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("z", "", "a"));
    EXPECT_EQ(registry.value("K", "z")->text, "again");
}

TEST(Registry, ForgetsARemovedValue) {
    Registry registry;
    registry.setValue("K", "a", text("1"));
    registry.setValue("K", "b", text("2"));
    registry.removeValue("k", "A");
    registry.removeValue("k", "none");
    registry.removeValue("none", "a");
    EXPECT_FALSE(registry.value("K", "a"));
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("b"));
    registry.setValue("K", "a", text("3"));
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("b", "a"));
    EXPECT_EQ(registry.value("K", "a")->text, "3");
}

TEST(Registry, RemovesAKeyWithThoseBelowAndNoOther) {
    Registry registry;
    for (const char *key : {R"(A\B)", R"(A\B\C)", R"(A\b\D\E)", R"(A\BC)", R"(A\B!)", R"(A\B])", "A"}) {
        registry.setValue(key, "n", text(key));
    }
    registry.removeKey(R"(a\b\)");
    EXPECT_FALSE(registry.hasKey(R"(A\B)"));
    EXPECT_FALSE(registry.hasKey(R"(A\B\C)"));
    EXPECT_FALSE(registry.hasKey(R"(A\B\D)"));
    for (const char *key : {R"(A\BC)", R"(A\B!)", R"(A\B])", "A"}) {
        EXPECT_TRUE(registry.value(key, "n")) << key;
    }
}

TEST(Registry, KeepsAKeyThatIsAddedAgain) {
    Registry registry;
    registry.setValue("K", "a", text("1"));
    registry.addKey("K");
    EXPECT_TRUE(registry.value("K", "a"));
}

} // namespace
