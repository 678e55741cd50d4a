#include "orchard/model/IdIndex.h"

#include <gtest/gtest.h>

using orchard::ElementId;

TEST(IdIndex, FindsWhatIsThereAfterManyCameAndWent) {
    std::vector<std::unique_ptr<orchard::Element>> elements;
    orchard::IdIndex index;
    for (std::uint64_t number = 1; number <= 3000; ++number) {
        elements.push_back(orchard::makeElement(orchard::Kind::attribute));
        elements.back()->setId(ElementId::numbered(number));
        EXPECT_EQ(index.add(*elements.back()), nullptr);
    }
    for (std::size_t at = 0; at < elements.size(); at += 3) {
        index.remove(*elements[at]);
    }
    EXPECT_EQ(index.size(), 2000U);
    for (std::size_t at = 0; at < elements.size(); ++at) {
        EXPECT_EQ(index.find(elements[at]->id()), at % 3 == 0 ? nullptr : elements[at].get());
    }
}

TEST(IdIndex, TheFirstOfTwoWithOneIdentifierStays) {
    const auto first = orchard::makeElement(orchard::Kind::attribute);
    const auto second = orchard::makeElement(orchard::Kind::attribute);
    first->setId(ElementId::numbered(1));
    second->setId(ElementId::numbered(1));
    orchard::IdIndex index;
    EXPECT_EQ(index.find(first->id()), nullptr);
    index.add(*first);
    EXPECT_EQ(index.add(*second), first.get());
    index.remove(*second);
    EXPECT_EQ(index.find(first->id()), first.get());
}
