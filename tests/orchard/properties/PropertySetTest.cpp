#include "orchard/properties/PropertySet.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using orchard::PropertySet;

std::string valueIn(const PropertySet &set, const char *metaclass, const char *key) {
    const IProperty *const property = set.table().find("ConfigurationManagement", metaclass, key);
    return property == nullptr ? "(none)" : property->getType().str() + " " + property->getValue().str();
}

TEST(PropertySet, HoldsToolDescriptionAndTypedProperties) {
    std::string problem;
    const auto set =
        PropertySet::parse("tool = 'Vault'\ndescription = 'A vault'\n[ConfigurationManagement.Vault]\n"
                           "CheckOut = 'get \"$UnitPath\"'\nLimit = 5000\nAsk = true\nLoud = false\n",
                           "vault.toml", problem);
    ASSERT_NE(set, nullptr) << problem;
    EXPECT_EQ(set->name(), "Vault");
    EXPECT_EQ(set->tool(), "Vault");
    EXPECT_EQ(set->description(), "A vault");
    EXPECT_EQ(valueIn(*set, "Vault", "CheckOut"), "String get \"$UnitPath\"");
    EXPECT_EQ(valueIn(*set, "Vault", "Limit"), "Int 5000");
    EXPECT_EQ(valueIn(*set, "Vault", "Ask"), "Bool True");
    EXPECT_EQ(valueIn(*set, "Vault", "Loud"), "Bool False");
    EXPECT_EQ(valueIn(*set, "Other", "Ask"), "(none)");
}

TEST(PropertySet, WithoutAToolIsNamedAfterItsFile) {
    std::string problem;
    const auto set = PropertySet::parse("", "/a/b/defaults.toml", problem);
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->name(), "defaults");
    EXPECT_EQ(set->tool(), "");
}

TEST(PropertySet, KeepsLineEndsAndBackslashesOfAValue) {
    std::string problem;
    const auto set =
        PropertySet::parse("[ConfigurationManagement.T]\na = '\\$x[\\]'\nb = \"one\\ntwo\"\n", "t", problem);
    ASSERT_NE(set, nullptr) << problem;
    EXPECT_EQ(valueIn(*set, "T", "a"), "String \\$x[\\]");
    EXPECT_EQ(valueIn(*set, "T", "b"), "String one\ntwo");
}

struct BrokenRow {
    const char *name;
    std::string text;
    const char *problem;
    friend std::ostream &operator<<(std::ostream &stream, const BrokenRow &row) { return stream << row.name; }
};

class BrokenPropertySet : public testing::TestWithParam<BrokenRow> {};

TEST_P(BrokenPropertySet, IsNotUsedAndTheMistakeIsToldWithItsPlace) {
    std::string problem;
    EXPECT_EQ(PropertySet::parse(GetParam().text, "f.toml", problem), nullptr);
    EXPECT_TRUE(problem.starts_with(GetParam().problem)) << problem;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BrokenPropertySet,
    testing::Values(
        BrokenRow{"NoToml", "tool = 'a'\nthis is no toml\n", "f.toml:2:"},
        BrokenRow{"Truncated", "[ConfigurationManagement.T]\na = 'abc", "f.toml:2:"},
        BrokenRow{"Binary",
                  std::string("\x7f"
                              "ELF\x02\x01\0\0",
                              8),
                  "f.toml:1:1"},
        BrokenRow{"NoUtf8", "[ConfigurationManagement.T]\na = '\xff\xfe'\n", "f.toml:2:"},
        BrokenRow{"AKeyTwice", "[ConfigurationManagement.T]\na = '1'\na = '2'\n", "f.toml:3:"},
        BrokenRow{"AKeyTwiceInOtherCase", "[ConfigurationManagement.T]\nkey = '1'\nKEY = '2'\n",
                  "f.toml:2:7: the property 'key' occurs twice"},
        BrokenRow{"AList", "[ConfigurationManagement.T]\na = ['1']\n",
                  "f.toml:2:5: the property 'a' must be a text, an integer, true or false"},
        BrokenRow{"AFraction", "[ConfigurationManagement.T]\na = 1.5\n", "f.toml:2:5: the property 'a' must be"},
        BrokenRow{"ADate", "[ConfigurationManagement.T]\na = 2026-01-01\n",
                  "f.toml:2:5: the property 'a' must be"},
        BrokenRow{"NoHeading", "CheckOut = 'co'\n", "f.toml:1:12: 'CheckOut' is outside a table"},
        BrokenRow{"NoMetaclass", "[ConfigurationManagement]\nCheckOut = 'co'\n",
                  "f.toml:2:12: the property 'CheckOut' has no metaclass"},
        BrokenRow{"ToolIsNoText", "tool = 1\n", "f.toml:1:8: 'tool' must be a text on one line"},
        BrokenRow{"ToolIsEmpty", "tool = ''\n", "f.toml:1:8: 'tool' must be a text on one line"},
        BrokenRow{"ToolHasAControlCharacter", "tool = \"a\\u001b[2J\"\n", "f.toml:1:8: 'tool' must be a text"},
        BrokenRow{"ANul", "[ConfigurationManagement.T]\na = \"x\\u0000y\"\n",
                  "f.toml:2:5: the property 'a' contains a NUL character"},
        BrokenRow{"DeepNesting", "a = " + std::string(5000, '[') + "\n", "f.toml:1:"}),
    [](const auto &row) { return row.param.name; });

TEST(PropertySetFile, ThatIsTooLargeIsRefused) {
    const support::TemporaryDirectory directory;
    const auto file = directory.write("large.toml", std::string(2'000'000, '#'));
    std::string problem;
    EXPECT_EQ(PropertySet::read(file, problem), nullptr);
    EXPECT_EQ(problem, file + ": it is larger than 1024 KiB");
}

} // namespace
