#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertySet.h"
#include "orchard/properties/PropertyTable.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

TEST(OwnerOfValue, IsToldWithToolFileLineAndColumn) {
    std::string problem;
    const auto set = orchard::PropertySet::parse("[ConfigurationManagement.RCS]\nPattern = 'unique(1'\n",
                                                 "/sets/rcs.toml", problem);
    ASSERT_NE(set, nullptr) << problem;
    EXPECT_EQ(orchard::ownerOfValue("unique(1"), "property \"Pattern\" of RCS (/sets/rcs.toml:2:11)");
}

TEST(OwnerOfValue, IsNobodyForAValueThatNobodyHas) { EXPECT_EQ(orchard::ownerOfValue("nobody has this"), ""); }

TEST(OwnerOfValue, FollowsAChangeOfTheValue) {
    orchard::PropertyTable table;
    IProperty &property = table.set("s", "m", "k", "String", "before(");
    property.setValue("after(");
    EXPECT_EQ(orchard::ownerOfValue("before("), "");
    EXPECT_EQ(orchard::ownerOfValue("after("), "property \"k\" of m");
}

TEST(OwnerOfValue, IsNoCopyAndNoPropertyThatIsGone) {
    auto table = std::make_unique<orchard::PropertyTable>();
    const IProperty copy(&table->set("s", "m", "k", "String", "gone("));
    table.reset();
    EXPECT_EQ(orchard::ownerOfValue("gone("), "");
}

TEST(OwnerOfValue, IsFoundAmongManyThatComeAndGoInAnyOrder) {
    std::vector<std::unique_ptr<orchard::PropertyTable>> tables;
    for (int i = 0; i < 30; ++i) {
        tables.push_back(std::make_unique<orchard::PropertyTable>());
        tables.back()->set("s", "m", "k" + std::to_string(i), "String", "value" + std::to_string(i));
    }
    for (const std::size_t gone : {0U, 29U, 14U, 1U}) {
        tables[gone].reset();
    }
    EXPECT_EQ(orchard::ownerOfValue("value14"), "");
    EXPECT_EQ(orchard::ownerOfValue("value0"), "");
    EXPECT_EQ(orchard::ownerOfValue("value2"), "property \"k2\" of m");
    EXPECT_EQ(orchard::ownerOfValue("value28"), "property \"k28\" of m");
}

} // namespace
