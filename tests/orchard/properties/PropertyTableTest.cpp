#include "orchard/properties/PropertyTable.h"

#include "CM/host/IDObject.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class Holder : public IObject {
  public:
    void doNotify() override { ++changes; }
    int changes = 0;
};

const char *const cm = "ConfigurationManagement";

TEST(PropertyTable, FindsWhatWasSetWithoutRegardToCase) {
    orchard::PropertyTable table;
    table.set(cm, "RCS", "CheckOut", "String", "co");
    IProperty *const found = table.find("CONFIGURATIONMANAGEMENT", "rcs", "checkout");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->getName(), "CheckOut");
    EXPECT_EQ(found->getType(), "String");
    EXPECT_EQ(found->getValue(), "co");
    EXPECT_EQ(table.find(cm, "CVS", "CheckOut"), nullptr);
    EXPECT_EQ(table.find(cm, "RCS", "CheckIn"), nullptr);
    EXPECT_EQ(table.find("Other", "RCS", "CheckOut"), nullptr);
}

TEST(PropertyTable, SettingAgainKeepsThePropertyAndItsPlace) {
    orchard::PropertyTable table;
    IProperty *const first = &table.set(cm, "RCS", "A", "String", "1");
    table.set(cm, "RCS", "B", "String", "2");
    IProperty *const again = &table.set(cm, "RCS", "a", "Int", "3");
    EXPECT_EQ(again, first);
    ASSERT_EQ(table.entries().size(), 2U);
    EXPECT_EQ(table.entries()[0].property->getValue(), "3");
    EXPECT_EQ(table.entries()[0].property->getType(), "Int");
}

TEST(PropertyTable, SettingTellsNobodyButSettingTheValueOfAPropertyTellsTheHolder) {
    Holder holder;
    orchard::PropertyTable table(holder);
    IProperty &property = table.set(cm, "RCS", "A", "String", "1");
    EXPECT_EQ(holder.changes, 0);
    property.setValue("2");
    EXPECT_EQ(holder.changes, 1);
    property.setValue("2");
    EXPECT_EQ(holder.changes, 1) << "nothing has changed";
}

TEST(PropertyTable, AnotherHolderIsToldOfAllItsProperties) {
    Holder one;
    Holder other;
    orchard::PropertyTable table(one);
    IProperty &property = table.set(cm, "RCS", "A", "String", "1");
    table.setHolder(other);
    property.setValue("2");
    table.set(cm, "RCS", "B", "String", "1").setValue("2");
    EXPECT_EQ(one.changes, 0);
    EXPECT_EQ(other.changes, 2);
}

TEST(PropertyTable, RemovesAndFindsTheRestAtAnySize) {
    for (const int size : {1, 5, 12, 13, 14, 40, 1000}) {
        orchard::PropertyTable table;
        for (int i = 0; i < size; ++i) {
            table.set(cm, "T", "key" + std::to_string(i), "String", std::to_string(i));
        }
        EXPECT_FALSE(table.remove(cm, "T", "key" + std::to_string(size)));
        EXPECT_TRUE(table.remove(cm, "T", "KEY0"));
        EXPECT_FALSE(table.remove(cm, "T", "key0"));
        EXPECT_EQ(table.find(cm, "T", "key0"), nullptr);
        for (int i = 1; i < size; ++i) {
            const IProperty *const found = table.find(cm, "t", "key" + std::to_string(i));
            ASSERT_NE(found, nullptr) << i << " of " << size;
            EXPECT_EQ(found->getValue(), std::to_string(i));
        }
        table.set(cm, "T", "key0", "String", "again");
        EXPECT_EQ(table.find(cm, "T", "key0")->getValue(), "again");
        EXPECT_EQ(table.entries().size(), static_cast<std::size_t>(size));
    }
}

TEST(PropertyTable, PropertiesStayWhereTheyAreWhileOthersComeAndGo) {
    orchard::PropertyTable table;
    IProperty *const kept = &table.set(cm, "T", "kept", "String", "x");
    for (int i = 0; i < 100; ++i) {
        table.set(cm, "T", std::to_string(i), "String", "");
    }
    for (int i = 0; i < 100; ++i) {
        table.remove(cm, "T", std::to_string(i));
    }
    EXPECT_EQ(table.find(cm, "T", "kept"), kept);
    EXPECT_EQ(kept->getValue(), "x");
}

} // namespace
