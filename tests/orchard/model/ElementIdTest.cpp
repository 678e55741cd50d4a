#include "orchard/model/ElementId.h"

#include <gtest/gtest.h>

using orchard::ElementId;

TEST(ElementId, TextComesBack) {
    const ElementId id{0x0123456789ABCDEFULL, 0xFEDCBA9876543210ULL};
    EXPECT_EQ(id.text(), "01234567-89ab-cdef-fedc-ba9876543210");
    EXPECT_EQ(ElementId::parse(id.text()), id);
    EXPECT_EQ(ElementId::parse("01234567-89AB-CDEF-FEDC-BA9876543210"), id);
}

TEST(ElementId, OtherTextsAreNone) {
    for (const char *const text :
         {"", "1", "01234567-89ab-cdef-fedc-ba987654321", "01234567-89ab-cdef-fedc-ba98765432100",
          "01234567x89ab-cdef-fedc-ba9876543210", "g1234567-89ab-cdef-fedc-ba9876543210",
          "00000000-0000-0000-0000-000000000000"}) {
        EXPECT_FALSE(ElementId::parse(text)) << text;
    }
}

TEST(ElementId, NumberedOnesAreTheSameInEveryRunAndDiffer) {
    EXPECT_EQ(ElementId::numbered(1), ElementId::numbered(1));
    EXPECT_NE(ElementId::numbered(1), ElementId::numbered(2));
    EXPECT_NE(ElementId::random(), ElementId::random());
}
