#include "apps/orchard-cm/base/Table.h"

#include <gtest/gtest.h>

#include <sstream>

using orchard_cm::Table;

TEST(Table, AlignsColumnsByCharactersAndNotByBytes) {
    Table table{"NAME", "FILE"};
    table.add({"Öl", "oil.ocl"});
    table.add({"Pump", "pump.ocl"});
    std::ostringstream out;
    table.write(out);
    EXPECT_EQ(out.str(), "NAME  FILE\nÖl    oil.ocl\nPump  pump.ocl\n");
}
TEST(Table, WritesNothingWithoutRows) {
    std::ostringstream out;
    Table{"NAME"}.write(out);
    EXPECT_EQ(out.str(), "");
}
