// Tests what the provider says to the user, and the names that it enumerates.
#include "CM/CMSupport/provider/FileNameList.h"
#include "CM/CMSupport/provider/ResultTexts.h"
#include "CM/CMSupport/provider/SCCPopListFunc.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"

#include <set>

using resources::Text;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

// --- Text while the provider works.

class ProviderText : public ProviderFixture {};

TEST_F(ProviderText, GoesToTheOutputWindowWithALineEnd) {
    EXPECT_EQ(SCCTextOutProc::IDETextOutProc("Pump.ocl;2", SCC_MSG_INFO), 0);
    EXPECT_EQ(SCCTextOutProc::IDETextOutProc("locked", SCC_MSG_ERROR), 0) << "the kind is ignored";
    EXPECT_EQ(SCCTextOutProc::IDETextOutProc("", 99), 0);
    EXPECT_EQ(shown.str(), "Pump.ocl;2\nlocked\n\n");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(ProviderText, IsDroppedWithoutAnOutputWindow) {
    getMainCMOutputer()() = nullptr;
    EXPECT_EQ(SCCTextOutProc::IDETextOutProc("Pump.ocl;2", SCC_MSG_INFO), 0);
    EXPECT_EQ(shown.str(), "");
}

TEST_F(ProviderText, NeverAsksToCancelNotEvenWithoutAText) {
    EXPECT_EQ(SCCTextOutProc::IDETextOutProc(nullptr, SCC_MSG_DOCANCEL), SCC_MSG_RTN_OK);
    EXPECT_EQ(shown.str(), "");
}

// --- Results.

class ProviderResult : public ProviderFixture {
  protected:
    /// The box that a result shows, as its icon and its text without the closing sentence.
    std::pair<unsigned int, std::string> box(long result) {
        host.clearRecords();
        EXPECT_EQ(SCCTextOutProc::InternalTextOutProc(result, 0), 1);
        if (host.messages.shown.size() != 1) {
            ADD_FAILURE() << result << " shows " << host.messages.shown.size() << " boxes";
            return {};
        }
        const std::string text = host.messages.shown[0].text.str();
        EXPECT_TRUE(text.ends_with(closing)) << result;
        return {host.messages.shown[0].flags, text.substr(0, text.size() - closing.size())};
    }
    const std::string closing = resources::text(Text::providerClosing);
    const std::string errorOpening = resources::text(Text::providerErrorOpening);
    const std::string warningOpening = resources::text(Text::providerWarningOpening);
};

TEST_F(ProviderResult, ErrorsHaveTheErrorOpeningAndTheirOwnMessage) {
    std::set<std::string> messages;
    for (long result = -29; result <= -1; ++result) {
        if (result != SCC_E_NONSPECIFICERROR) {
            const std::string message = provider::resultText(result).str();
            EXPECT_NE(message, "") << result;
            EXPECT_EQ(box(result), std::pair(16U, errorOpening + message)) << result;
            messages.insert(message);
        }
    }
    EXPECT_EQ(messages.size(), 28U) << "each has its own";
}

TEST_F(ProviderResult, ANonspecificErrorHasItsMessageInPlaceOfTheOpening) {
    EXPECT_EQ(box(SCC_E_NONSPECIFICERROR), std::pair(16U, provider::resultText(SCC_E_NONSPECIFICERROR).str()));
    EXPECT_NE(provider::resultText(SCC_E_NONSPECIFICERROR), "");
}

TEST_F(ProviderResult, OneToFourHaveTheWarningOpeningAndTheirOwnMessage) {
    std::set<std::string> messages;
    for (long result = 1; result <= 4; ++result) {
        const std::string message = provider::resultText(result).str();
        EXPECT_EQ(box(result), std::pair(48U, warningOpening + message)) << result;
        messages.insert(message);
    }
    EXPECT_EQ(messages.size(), 4U);
    EXPECT_FALSE(messages.contains(""));
}

TEST_F(ProviderResult, AllOthersHaveTheWarningOpeningAlone) {
    for (const long result : {0L, 5L, 6L, 7L, 8L, -30L, -31L, -99L, 100000L}) {
        EXPECT_EQ(box(result), std::pair(48U, warningOpening)) << result;
    }
}

TEST_F(ProviderResult, CanGoToTheOutputWindowInstead) {
    EXPECT_EQ(SCCTextOutProc::InternalTextOutProc(SCC_E_FILEISLOCKED, 1), 1);
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_EQ(host.window.text(), "\n" + errorOpening + resources::text(Text::resultFileLocked) + closing + "\n");
}

TEST_F(ProviderResult, TextsAreShownByTheirLevel) {
    const std::pair<unsigned long, unsigned int> levels[] = {{1, 64}, {2, 48}, {3, 16}};
    for (const auto &[level, icon] : levels) {
        host.clearRecords();
        EXPECT_EQ(SCCTextOutProc::InternalTextOutProc("text", level), 0);
        ASSERT_EQ(host.messages.shown.size(), 1U);
        EXPECT_EQ(host.messages.shown[0].text, "text");
        EXPECT_EQ(host.messages.shown[0].flags, icon);
        EXPECT_EQ(host.messages.shown[0].level, messageLevelDefault);
    }
}

TEST_F(ProviderResult, ASuccessIsASentenceOfItsOwn) {
    EXPECT_EQ(SCCTextOutProc::InternalTextOutProc("check in", 99), 0);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::format(Text::providerSuccess, {"check in"}));
    EXPECT_EQ(host.messages.shown[0].flags, 64U);
}

TEST_F(ProviderResult, OtherLevelsShowNothing) {
    for (const unsigned long level : {0UL, 4UL, 98UL, 100UL}) {
        EXPECT_EQ(SCCTextOutProc::InternalTextOutProc("text", level), 0);
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

// --- Names.

class EnumeratedNames : public ProviderFixture {
  protected:
    EnumeratedNames() {
        project().fileName = "Plant.ory";
        project().extension = ".ory";
    }
    static void receive(char const *file, int add = 1) {
        EXPECT_EQ(SCCPopListFunc::InternalPopListFunc(nullptr, add, SCC_STATUS_CONTROLLED, file), 1);
    }
    [[nodiscard]] static const CStringList &names() { return CMProperty::getFileNamesList().names(); }
};

TEST_F(EnumeratedNames, AreKeptOnceInTheirOrder) {
    for (const char *const name : {"/a/Pump.ocl", "/a/Drive.ocl", "/a/Pump.ocl", "/a/pump.ocl"}) {
        receive(name);
    }
    EXPECT_THAT(names(), ElementsAre("/a/Pump.ocl", "/a/Drive.ocl", "/a/pump.ocl"));
}

TEST_F(EnumeratedNames, AreCopiedAtOnce) {
    std::string name = "/a/Pump.ocl";
    receive(name.c_str());
    name.assign(name.size(), 'x');
    EXPECT_THAT(names(), ElementsAre("/a/Pump.ocl"));
    EXPECT_TRUE(CMProperty::getFileNamesList().contains("/a/Pump.ocl"));
}

TEST_F(EnumeratedNames, ThatAreDroppedChangeNothing) {
    receive("/a/Pump.ocl", 0);
    EXPECT_TRUE(names().IsEmpty());
    receive("/a/Pump.ocl", -1);
    receive("/a/Pump.ocl", 0);
    EXPECT_THAT(names(), ElementsAre("/a/Pump.ocl"));
}

TEST_F(EnumeratedNames, AreFiltered) {
    receive("/a/Other.ory");
    receive("/a/Plant.ory");
    receive(nullptr);
    EXPECT_THAT(names(), ElementsAre("/a/Plant.ory"));
}

TEST_F(EnumeratedNames, TheFilterPassesAllThatAreNoProjectFiles) {
    EXPECT_EQ(NeedToAddFile("/a/Pump.ocl"), 1);
    EXPECT_EQ(NeedToAddFile("readme"), 1);
    EXPECT_EQ(NeedToAddFile(" "), 1);
}

TEST_F(EnumeratedNames, TheFilterPassesTheProjectsOwnFileOnly) {
    for (const char *const own : {"Plant.ory", "/a/b/Plant.ory", "C:\\a\\Plant.ory", "/a/b\\Plant.ory",
                                  " Plant.ory\t", "/a/ Plant.ory "}) {
        EXPECT_EQ(NeedToAddFile(own), 1) << own;
    }
    for (const char *const other : {"Mill.ory", "/a/Mill.ory", "plant.ory", "/a/Plant.ory/x", "/Plant.ory/Mill",
                                    "XPlant.ory", "Plant.ory.bak", "a\\b/Plant.ory"}) {
        EXPECT_EQ(NeedToAddFile(other), 0) << other;
    }
}

TEST_F(EnumeratedNames, TheFilterPassesEveryFileIfTheToolShowsAll) {
    host.setToolDefault("SCC", "ShowAllFilesInArchive", "True");
    EXPECT_EQ(NeedToAddFile("/a/Mill.ory"), 1);
    EXPECT_EQ(NeedToAddFile("/a/Plant.ory"), 1);
    EXPECT_EQ(NeedToAddFile(""), 0);
}

TEST_F(EnumeratedNames, TheFilterPassesNothingWithoutANameOrAProject) {
    EXPECT_EQ(NeedToAddFile(nullptr), 0);
    EXPECT_EQ(NeedToAddFile(""), 0);
    host.model.activeProject = nullptr;
    EXPECT_EQ(NeedToAddFile("/a/Pump.ocl"), 0);
}

} // namespace
