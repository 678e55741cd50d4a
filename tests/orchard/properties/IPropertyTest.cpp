#include "CM/host/IProperty.h"

#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertyTable.h"

#include <gtest/gtest.h>

#include <ostream>
#include <utility>

namespace {

struct BoolRow {
    const char *value;
    bool expected;
    friend std::ostream &operator<<(std::ostream &stream, const BoolRow &row) {
        return stream << '"' << row.value << '"';
    }
};

class PropertyTruth : public testing::TestWithParam<BoolRow> {};

TEST_P(PropertyTruth, IsReadFromTheValue) {
    orchard::PropertyTable table;
    EXPECT_EQ(table.set("s", "m", "k", "Bool", GetParam().value).getBool(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, PropertyTruth,
                         testing::Values(BoolRow{"True", true}, BoolRow{"TRUE", true}, BoolRow{"yes", true},
                                         BoolRow{"1", true}, BoolRow{"False", false}, BoolRow{"", false},
                                         BoolRow{"Y", false}, BoolRow{"0", false}, BoolRow{"11", false}));

TEST(PropertyCopy, TakesNameTypeAndValueAndTellsNobody) {
    orchard::PropertyTable table;
    const IProperty &original = table.set("s", "m", "k", "Int", "7");
    IProperty copy(&original);
    EXPECT_EQ(copy.getName(), "k");
    EXPECT_EQ(copy.getType(), "Int");
    copy.setValue("8");
    copy.setName("other");
    copy.setType("String");
    EXPECT_EQ(original.getValue(), "7");
    EXPECT_EQ(original.getName(), "k");
    EXPECT_EQ(original.getType(), "Int");
    EXPECT_EQ(copy.getName(), "other");
    EXPECT_EQ(copy.getType(), "String");
}

TEST(PropertyName, OfAnAttachedPropertyStaysAsItIsFoundByIt) {
    orchard::PropertyTable table;
    IProperty &property = table.set("s", "m", "k", "Int", "7");
    property.setName("a name that is too long to stand within the text itself");
    EXPECT_EQ(property.getName(), "k");
    EXPECT_EQ(table.find("s", "m", "k"), &property);
}

TEST(PropertyCopy, OfNothingIsEmpty) {
    const IProperty copy(static_cast<const IProperty *>(nullptr));
    EXPECT_EQ(copy.getName(), "");
    EXPECT_EQ(copy.getValue(), "");
}

class InstalledChange : public testing::Test {
  protected:
    InstalledChange() { property.data().isInstalled = true; }
    ~InstalledChange() override { orchard::setInstalledChangeHandler({}); }
    orchard::PropertyTable table;
    IProperty &property = table.set("s", "m", "k", "String", "installed");
};

TEST_F(InstalledChange, GoesToTheHandlerAndLeavesTheSetAlone) {
    std::string seen;
    orchard::setInstalledChangeHandler([&](const std::string &subject, const std::string &metaclass,
                                           const IProperty &changed, const CString &value) {
        seen = subject + "/" + metaclass + "/" + changed.getName().str() + "=" + value.str();
        return true;
    });
    property.setValue("new");
    EXPECT_EQ(seen, "s/m/k=new");
    EXPECT_EQ(property.getValue(), "installed");
}

TEST_F(InstalledChange, IsMadeInMemoryIfTheHandlerDoesNotTakeIt) {
    orchard::setInstalledChangeHandler([](const auto &...) { return false; });
    property.setValue("new");
    EXPECT_EQ(property.getValue(), "new");
}

TEST_F(InstalledChange, ACopyIsNoLongerInstalled) {
    bool wasAsked = false;
    orchard::setInstalledChangeHandler([&](const auto &...) { return wasAsked = true; });
    IProperty copy(&property);
    copy.setValue("new");
    EXPECT_FALSE(wasAsked);
    EXPECT_EQ(copy.getValue(), "new");
}

} // namespace
