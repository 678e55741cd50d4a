#include "orchard/text/LiteralSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

TEST(FindText, FindsWhatAPlainSearchFindsAtEveryPlaceAndLength) {
    std::mt19937 random(7); // NOLINT: the same texts at every run
    for (int round = 0; round < 3000; ++round) {
        std::string text(random() % 300, ' ');
        for (char &c : text) {
            c = static_cast<char>('a' + random() % 2);
        }
        std::string what(1 + random() % 9, ' ');
        for (char &c : what) {
            c = static_cast<char>('a' + random() % 2);
        }
        const std::size_t from = random() % 310;
        EXPECT_EQ(orchard::findText(text, what, from), text.find(what, from))
            << text << ' ' << what << ' ' << from;
    }
}

TEST(FindText, FindsAMatchThatBeginsInOneBlockAndEndsInTheNext) {
    for (std::size_t at = 0; at < 200; ++at) {
        std::string text(400, 'x');
        text.replace(at, 12, "\n==========\n");
        EXPECT_EQ(orchard::findText(text, "\n==========\n", 0), at);
        EXPECT_EQ(orchard::findText(text, "\n==========\n", at + 1), std::string::npos);
    }
}
