#include "CM/CMSupport/core/CMTranscation.h"

#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"
#include "tests/CM/CMSupport/core/shared/FlushedText.h"

using resources::Text;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CheckUnits : public CoreFixture {
  protected:
    recording::Class &unit(const CString &name) { return host.addUnit(name); }
    recording::Class &stub(const CString &name) {
        auto &made = host.addUnit(name);
        made.stub = true;
        return made;
    }
    recording::Class &reference(const CString &name) {
        auto &made = host.addUnit(name);
        made.reference = true;
        return made;
    }
    /// Returns the units that remain for an operation of this type.
    static std::vector<IUnit *> check(int type, std::initializer_list<IUnit *> units) {
        const CMTranscation transaction(nullptr, 1, static_cast<CMTranscationType>(type), "");
        return checkAgain(units);
    }
    static std::vector<IUnit *> checkAgain(std::initializer_list<IUnit *> units) {
        CMUnitList list(units);
        CMTranscation::checkUnitsForOperation(list);
        return {list.begin(), list.end()};
    }
    [[nodiscard]] std::vector<std::string> boxes() const {
        std::vector<std::string> texts;
        for (const auto &message : host.messages.shown) {
            texts.push_back(message.text.str());
        }
        return texts;
    }
    static std::string line(Text text, const char *kind, const char *name) {
        return resources::format(text, {kind, name}) + "\n";
    }
    const std::string summary = resources::text(Text::someUnitsLeftOut);
};

TEST_F(CheckUnits, LeavesAnEmptyListAlone) {
    EXPECT_THAT(check(CMTxnCheckIn, {}), IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(CheckUnits, RemovesAllStubsOfACheckInWithOneBoxAndALineForEach) {
    auto &first = stub("Pump");
    auto &second = stub("Valve");
    EXPECT_THAT(check(CMTxnCheckIn, {&first, &second}), IsEmpty());
    EXPECT_THAT(boxes(), ElementsAre(summary));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONEXCLAMATION);
    EXPECT_EQ(host.messages.shown[0].level, 2);
    EXPECT_EQ(host.window.text(),
              line(Text::stubLeftOut, "Class", "Pump") + line(Text::stubLeftOut, "Class", "Valve"));
}

TEST_F(CheckUnits, FlushesItsLines) {
    const FlushedText buffer(host.window.stream);
    auto &one = stub("Pump");
    check(CMTxnCheckIn, {&one});
    EXPECT_EQ(buffer.flushed(), line(Text::stubLeftOut, "Class", "Pump"));
}

TEST_F(CheckUnits, KeepsTheOthersInTheirOrder) {
    auto &a = unit("A");
    auto &b = stub("B");
    auto &c = unit("C");
    auto &d = reference("D");
    auto &e = unit("E");
    EXPECT_THAT(check(CMTxnCheckIn, {&a, &b, &c, &d, &e}), ElementsAre(&a, &c, &e));
    EXPECT_EQ(host.window.text(),
              line(Text::stubLeftOut, "Class", "B") + line(Text::referenceLeftOut, "Class", "D"));
    EXPECT_THAT(boxes(), ElementsAre(summary));
}

TEST_F(CheckUnits, IsDoneWithTheListAndItsUnitsBeforeTheFirstBox) {
    auto &a = stub("A");
    auto &b = unit("B");
    auto &c = stub("C");
    CMUnitList list{&a, &b, &c};
    std::vector<IUnit *> atTheBox;
    host.messages.onShow = [&] {
        atTheBox.assign(list.begin(), list.end());
        list.RemoveAll();
        c.name = "changed meanwhile";
        c.stub = false;
    };
    const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, "");
    CMTranscation::checkUnitsForOperation(list);
    EXPECT_THAT(atTheBox, ElementsAre(&b));
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(host.window.text(), line(Text::stubLeftOut, "Class", "A") + line(Text::stubLeftOut, "Class", "C"));
}

TEST_F(CheckUnits, ShowsItsBoxesInTheOrderOfTheUnits) {
    auto &left = reference("Left");
    auto &file = host.addEmbeddedFile("notes.txt");
    const std::string about = resources::format(Text::controlledFileCheckOut, {"notes.txt", "notes.txt"});
    check(CMTxnCheckOut, {&left, &file});
    EXPECT_THAT(boxes(), ElementsAre(summary, about));
    host.messages.shown.clear();
    check(CMTxnCheckOut, {&file, &left});
    EXPECT_THAT(boxes(), ElementsAre(about, summary));
}

TEST_F(CheckUnits, RemovesEachOccurrenceOfABarredUnit) {
    auto &a = unit("A");
    auto &b = stub("B");
    EXPECT_THAT(check(CMTxnCheckIn, {&b, &a, &b}), ElementsAre(&a));
    EXPECT_EQ(host.window.text(), line(Text::stubLeftOut, "Class", "B") + line(Text::stubLeftOut, "Class", "B"));
}

TEST_F(CheckUnits, TakesAPercentSignInANameForNoFormat) {
    auto &odd = stub("%s%n");
    check(CMTxnCheckIn, {&odd});
    EXPECT_EQ(host.window.text(), line(Text::stubLeftOut, "Class", "%s%n"));
}

class EveryType : public CheckUnits, public testing::WithParamInterface<int> {};

TEST_P(EveryType, KeepsAStubOnlyToCheckOutConnectFetchOrRunATool) {
    auto &one = stub("Pump");
    const int type = GetParam();
    const bool stays = type == 5 || type == 15 || type == 1 || type == 16;
    EXPECT_EQ(check(type, {&one}).size(), stays ? 1U : 0U);
    EXPECT_EQ(host.messages.shown.size(), stays ? 0U : 1U);
    EXPECT_EQ(host.window.text().empty(), stays);
}

TEST_P(EveryType, KeepsAReferenceOnlyToConnectOrRunATool) {
    auto &one = reference("Pump");
    const bool stays = GetParam() == 15 || GetParam() == 16;
    EXPECT_EQ(check(GetParam(), {&one}).size(), stays ? 1U : 0U);
    EXPECT_EQ(host.messages.shown.size(), stays ? 0U : 1U);
}

TEST_P(EveryType, KeepsThemAllIfTheProjectAllowsIt) {
    setGeneral("AllowCMOperationsOnStubUnits", "True");
    setGeneral("AllowCMOperationsOnReferenceUnits", "True");
    EXPECT_EQ(check(GetParam(), {&stub("Pump"), &reference("Valve")}).size(), 2U);
    EXPECT_THAT(host.messages.shown, IsEmpty());
}
INSTANTIATE_TEST_SUITE_P(CheckUnits, EveryType, testing::Range(0, 17), testing::PrintToStringParamName());

TEST_F(CheckUnits, RemovesThemIfTheProjectsPropertiesSayNo) {
    setGeneral("AllowCMOperationsOnStubUnits", "False");
    setGeneral("AllowCMOperationsOnReferenceUnits", "False");
    EXPECT_THAT(check(CMTxnCheckIn, {&stub("Pump"), &reference("Valve")}), IsEmpty());
}

TEST_F(CheckUnits, JudgesAStubThatIsAReferenceByTheReferenceRuleIfStubsAreAllowed) {
    setGeneral("AllowCMOperationsOnStubUnits", "True");
    auto &both = stub("Pump");
    both.reference = true;
    EXPECT_THAT(check(CMTxnCheckOut, {&both}), IsEmpty());
    EXPECT_EQ(host.window.text(), line(Text::referenceLeftOut, "Class", "Pump"));
}

TEST_F(CheckUnits, DoesNotLookFurtherAtAStubThatItsTypeLetsStay) {
    auto &both = stub("Pump");
    both.reference = true;
    EXPECT_THAT(check(CMTxnCheckOut, {&both}), ElementsAre(&both));
}

TEST_F(CheckUnits, CountsAnEmbeddedFileInAReferencedUnitAsAReferenceAndNamesTheFile) {
    auto &holder = reference("Pump");
    auto &file = host.addEmbeddedFile("notes.txt", &holder);
    file.saveUnit = false;
    EXPECT_THAT(check(CMTxnCheckIn, {&file}), IsEmpty());
    EXPECT_EQ(host.window.text(), line(Text::referenceLeftOut, "ControlledFile", "notes.txt"));
}

TEST_F(CheckUnits, KeepsAnEmbeddedFileOfAnOwnUnit) {
    auto &file = host.addEmbeddedFile("notes.txt", &unit("Pump"));
    file.saveUnit = false;
    EXPECT_THAT(check(CMTxnCheckIn, {&file}), ElementsAre(&file));
}

TEST_F(CheckUnits, NeitherChecksNorRemovesAnInnerElement) {
    auto &inner = stub("Inner");
    inner.reference = true;
    inner.saveUnit = false;
    EXPECT_THAT(check(CMTxnCheckIn, {&inner, nullptr}), ElementsAre(&inner, nullptr));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(CheckUnits, TellsOfControlledFilesOncePerOutermostOperation) {
    auto &file = host.addEmbeddedFile("notes.txt");
    {
        const CMTranscation outer(nullptr, 1, CMTxnCheckOut, "");
        EXPECT_THAT(checkAgain({&file, &file}), ElementsAre(&file, &file));
        check(CMTxnCheckOut, {&file});
    }
    ASSERT_EQ(host.messages.shown.size(), 1U);
    const auto &message = host.messages.shown[0];
    EXPECT_EQ(message.text.str(), resources::format(Text::controlledFileCheckOut, {"notes.txt", "notes.txt"}));
    EXPECT_EQ(message.key, "CONTROLLED_FILE_CHECKOUT_MSG");
    EXPECT_EQ(message.flags, MB_ICONINFORMATION);
    const std::string title = resources::text(Text::controlledFileTitle);
    const std::string box = resources::text(Text::controlledFileDontShow);
    EXPECT_THAT(host.callsOf("ask once"), ElementsAre("ask once 64 key=CONTROLLED_FILE_CHECKOUT_MSG title=" +
                                                      title + " box=" + box + " 1 0: " + message.text.str()));

    check(CMTxnCheckOut, {&file});
    EXPECT_EQ(host.messages.shown.size(), 2U) << "a new operation tells again";
}

TEST_F(CheckUnits, TellsOfAControlledFileByTheNameThatItGivesItself) {
    class Notes : public recording::EmbeddedFile {
        [[nodiscard]] CString getEmbeddedFileName() const override { return "embedded.txt"; }
    } notes;
    notes.name = "Notes";
    notes.fileName = "notes.txt";
    check(CMTxnCheckOut, {&notes});
    EXPECT_THAT(boxes(),
                ElementsAre(resources::format(Text::controlledFileCheckOut, {"embedded.txt", "embedded.txt"})));
}

TEST_F(CheckUnits, TellsOfControlledFilesOnlyOnACheckOut) {
    auto &file = host.addEmbeddedFile("notes.txt");
    check(CMTxnFetch, {&file});
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(CheckUnits, TellsNothingOfAControlledFileThatIsBarred) {
    auto &file = host.addEmbeddedFile("notes.txt");
    file.reference = true;
    EXPECT_THAT(check(CMTxnCheckOut, {&file}), IsEmpty());
    EXPECT_THAT(boxes(), ElementsAre(summary));
}

TEST_F(CheckUnits, ShowsTheSummaryOnceInNestedTransactionsAndAgainInANewOperation) {
    auto &one = stub("Pump");
    {
        const CMTranscation outer(nullptr, 1, CMTxnCheckIn, "");
        checkAgain({&one});
        check(CMTxnCheckIn, {&one});
        checkAgain({&one});
        EXPECT_THAT(boxes(), ElementsAre(summary));
    }
    check(CMTxnCheckIn, {&one});
    EXPECT_THAT(boxes(), ElementsAre(summary, summary));
}

TEST_F(CheckUnits, GoesByTheNewestTransaction) {
    auto &one = stub("Pump");
    const CMTranscation outer(nullptr, 1, CMTxnCheckIn, "");
    EXPECT_THAT(check(CMTxnFetch, {&one}), ElementsAre(&one));
}

TEST_F(CheckUnits, RemovesAlsoWithoutAStream) {
    auto &one = stub("Pump");
    host.window.managerExists = false;
    EXPECT_THAT(check(CMTxnCheckIn, {&one}), IsEmpty());
    EXPECT_THAT(boxes(), ElementsAre(summary));
}

TEST_F(CheckUnits, DoesNothingWithoutATransactionOrAProject) {
    auto &one = stub("Pump");
    EXPECT_THAT(checkAgain({&one}), ElementsAre(&one));
    host.model.activeProject = nullptr;
    EXPECT_THAT(check(CMTxnCheckIn, {&one}), ElementsAre(&one));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(CheckUnits, ReadsThePropertiesOncePerCallAndNotPerUnit) {
    auto &one = unit("Pump");
    const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, "");
    host.lookups.clear();
    checkAgain({&one, &one, &one, &one});
    EXPECT_EQ(host.lookups.size(), 2U);
}

} // namespace
