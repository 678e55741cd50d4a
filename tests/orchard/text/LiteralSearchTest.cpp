#include "orchard/text/LiteralSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

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

TEST(FindIgnoringCase, FindsWhatAPlainSearchInSmallLettersFindsAtEveryPlaceAndLength) {
    std::mt19937 random(9); // NOLINT: the same texts at every run
    constexpr std::string_view letters = "aAbB;";
    for (int round = 0; round < 5000; ++round) {
        std::string text(random() % 400, '.');
        for (char &c : text) {
            c = random() % 4 == 0 ? letters[random() % letters.size()] : c;
        }
        std::string what(1 + random() % 4, '.');
        for (char &c : what) {
            c = letters[random() % letters.size()];
        }
        std::string smallText = text;
        std::string smallWhat = what;
        std::ranges::transform(smallText, smallText.begin(), orchard::lowerCase);
        std::ranges::transform(smallWhat, smallWhat.begin(), orchard::lowerCase);
        const std::size_t from = random() % 410;
        ASSERT_EQ(orchard::findIgnoringCase(text, what, from), smallText.find(smallWhat, from))
            << text << ' ' << what << ' ' << from;
    }
}

TEST(FindIgnoringCase, FindsAtAnyDistance) {
    for (std::size_t at = 0; at < 600; ++at) {
        std::string text(600, '.');
        text[at] = 'X';
        ASSERT_EQ(orchard::findIgnoringCase(text, "x", 0), at);
    }
}

TEST(Case, IsThatOfTheLettersOfAsciiAlone) {
    const std::string small = "abcdefghijklmnopqrstuvwxyz";
    const std::string large = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const std::size_t inLarge = large.find(c);
        const std::size_t inSmall = small.find(c);
        EXPECT_EQ(orchard::lowerCase(c), inLarge == std::string::npos ? c : small[inLarge]) << byte;
        EXPECT_EQ(orchard::upperCase(c), inSmall == std::string::npos ? c : large[inSmall]) << byte;
    }
}
