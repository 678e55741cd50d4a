#include "CM/CMSupport/resources/Texts.h"

#include <gmock/gmock.h>
#include <map>
#include <string>

using resources::Text;
using resources::text;

namespace {

// The numbers of the table are those of the seven runs of the enumeration, to their last names.
template <class CHECK> void forEachText(CHECK check) {
    const auto run = [&check](Text first, Text last) {
        for (auto number = static_cast<unsigned>(first); number <= static_cast<unsigned>(last); ++number) {
            check(static_cast<Text>(number));
        }
    };
    run(Text::noToolSelected, Text::conditionalOfSeveral);
    run(Text::operationLock, Text::operationTool);
    run(Text::questionTitle, Text::questionNotAnswered);
    run(Text::statusCheckedOut, Text::statusRefreshQuestion);
    run(Text::outcomeDeclined, Text::callFailed);
    run(Text::providerFaulted, Text::resultNotAffected);
    run(Text::fileCheckedOut, Text::providerHasRenamed);
}

int placeholders(const std::string &shown) {
    int count = 0;
    for (auto place = shown.find('%'); place != std::string::npos; place = shown.find('%', place + 1)) {
        EXPECT_EQ(shown.substr(place, 2), "%s") << shown;
        ++count;
    }
    return count;
}

TEST(Texts, EveryNumberHasAText) {
    forEachText([](Text number) {
        EXPECT_STRNE(text(number), "?") << static_cast<unsigned>(number);
        EXPECT_STRNE(text(number), "") << static_cast<unsigned>(number);
    });
}

TEST(Texts, ANumberThatTheTableDoesNotHoldIsAQuestionMark) { EXPECT_STREQ(text(static_cast<Text>(9999)), "?"); }

TEST(Texts, TheOperationsHaveDifferentNames) {
    std::map<std::string, int> seen;
    for (auto number = static_cast<unsigned>(Text::operationLock);
         number <= static_cast<unsigned>(Text::operationTool); ++number) {
        EXPECT_EQ(seen[text(static_cast<Text>(number))]++, 0) << number;
    }
    EXPECT_EQ(seen.size(), 17U);
}

TEST(Texts, TakeTheArgumentsThatTheirNumbersPromise) {
    const std::map<Text, int> withArguments{
        {Text::cannotEnterDirectory, 2},
        {Text::conditionalOfSeveral, 1},
        {Text::stubLeftOut, 2},
        {Text::referenceLeftOut, 2},
        {Text::controlledFileCheckOut, 2},
        {Text::writableFileQuestion, 2},
        {Text::loadingFailed, 1},
        {Text::questionNotAnswered, 1},
        {Text::unitOutsideWorkingDirectory, 4},
        {Text::nameNotQuotable, 2},
        {Text::archiveNotQuotable, 2},
        {Text::namedCharacter, 1},
        {Text::outcomeRefused, 2},
        {Text::outcomeNoCommand, 1},
        {Text::outcomeEmptyCommand, 1},
        {Text::outcomeUnresolved, 2},
        {Text::outcomeEndless, 2},
        {Text::outcomeNoDirectory, 2},
        {Text::runFailed, 1},
        {Text::runKilled, 2},
        {Text::runNotStarted, 1},
        {Text::callFailed, 2},
        {Text::providerFaulted, 1},
        {Text::providerNotLoaded, 3},
        {Text::providerNotOne, 2},
        {Text::providerSuccess, 1},
        {Text::outcomeNoEntry, 1},
        {Text::fileCheckedOut, 1},
        {Text::filesNotCheckedOut, 1},
        {Text::fileNotControlled, 1},
        {Text::fileWillBeAdded, 1},
        {Text::fileNotCheckedOut, 1},
        {Text::fileInArchive, 1},
    };
    forEachText([&withArguments](Text number) {
        const auto found = withArguments.find(number);
        EXPECT_EQ(placeholders(text(number)), found == withArguments.end() ? 0 : found->second) << text(number);
    });
}

} // namespace
