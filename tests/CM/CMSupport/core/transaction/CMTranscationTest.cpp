#include "CM/CMSupport/core/CMTranscation.h"

#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"
#include "tests/CM/CMSupport/core/shared/FlushedText.h"

#include <sstream>
#include <stdexcept>
#include <string>

using resources::Text;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Transaction : public CoreFixture {};

/// Records what reaches the output window in host.calls, among the calls that have an effect.
class WritingNoted : public std::stringbuf {
  public:
    explicit WritingNoted(RecordingHost &host) : host_(host), before_(stream().rdbuf(this)) {}
    ~WritingNoted() override { stream().rdbuf(before_); }
    WritingNoted(const WritingNoted &) = delete;
    WritingNoted &operator=(const WritingNoted &) = delete;

  protected:
    std::streamsize xsputn(const char *text, std::streamsize length) override {
        host_.note("write " + std::string(text, static_cast<std::size_t>(length)));
        return length;
    }

  private:
    std::ios &stream() { return host_.window.stream; }

    RecordingHost &host_;
    std::streambuf *before_;
};

TEST_F(Transaction, IsOneUndoableStepFramedBySeparators) {
    setGeneral("CMOperationStartSeparator", "<start>\n");
    setGeneral("CMOperationEndSeparator", "<end>\n");
    {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
        EXPECT_THAT(host.calls, ElementsAre("undo start flag=1", "show window 1"));
        EXPECT_EQ(host.window.text(), "<start>\n");
        host.calls.clear();
    }
    EXPECT_THAT(host.calls, ElementsAre("undo end"));
    EXPECT_EQ(host.window.text(), "<start>\n<end>\n");
}

TEST_F(Transaction, OfAToolMakesNoUndoStep) {
    { const CMTranscation transaction(nullptr, 1, CMTxnTool, "Invoke Configuration Management Tool"); }
    EXPECT_THAT(host.calls, ElementsAre("show window 1"));
}

TEST_F(Transaction, WorksWithoutAnUndoManager) {
    host.undo.exists = false;
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, ""); }
    EXPECT_THAT(host.callsOf("undo"), IsEmpty());
}

TEST_F(Transaction, EndsTheUndoStepBeforeItWritesTheEndSeparator) {
    setGeneral("CMOperationStartSeparator", "<start>");
    setGeneral("CMOperationEndSeparator", "<end>");
    const WritingNoted noted(host);
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, ""); }
    EXPECT_THAT(host.calls,
                ElementsAre("undo start flag=1", "show window 1", "write <start>", "undo end", "write <end>"));
    EXPECT_EQ(host.undo.depth, 0);
}

TEST_F(Transaction, FlushesEachSeparator) {
    setGeneral("CMOperationStartSeparator", "<start>");
    setGeneral("CMOperationEndSeparator", "<end>");
    const FlushedText buffer(host.window.stream);
    {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
        EXPECT_EQ(buffer.flushed(), "<start>");
    }
    EXPECT_EQ(buffer.flushed(), "<start><end>");
}

TEST_F(Transaction, IsNotOpenIfTheUndoManagerThrows) {
    host.undo.onStart = [] { throw std::runtime_error("no undo"); };
    EXPECT_THROW(CMTranscation(nullptr, 1, CMTxnCheckOut, "first"), std::runtime_error);
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    EXPECT_THAT(host.callsOf("undo end"), IsEmpty()) << "nothing was begun";

    host.undo.onStart = nullptr;
    const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "second");
    EXPECT_EQ(CMTranscation::getCurTranscation(), &transaction);
    EXPECT_EQ(host.undo.depth, 1);
}

TEST_F(Transaction, EndsItsUndoStepIfTheHostThrowsBehindIt) {
    host.window.onShow = [] { throw std::runtime_error("no window"); };
    EXPECT_THROW(CMTranscation(nullptr, 1, CMTxnCheckOut, ""), std::runtime_error);
    EXPECT_THAT(host.calls, ElementsAre("undo start flag=1", "show window 1", "undo end"));
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
}

TEST_F(Transaction, ClosesAsFarAsTheHostLetsIt) {
    setGeneral("CMOperationEndSeparator", "<end>");
    host.undo.onEnd = [] { throw std::runtime_error("no undo"); };
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, ""); }
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    EXPECT_EQ(host.window.text(), "<end>");
}

TEST_F(Transaction, NestsWithItsOwnSeparatorsAndUndoSteps) {
    setGeneral("CMOperationStartSeparator", "[$Operation ");
    setGeneral("CMOperationEndSeparator", "$Operation] ");
    {
        const CMTranscation outer(nullptr, 1, CMTxnCheckOut, "outer");
        EXPECT_EQ(CMTranscation::getCurTranscation(), &outer);
        {
            const CMTranscation inner(nullptr, 1, CMTxnFetch, "inner");
            EXPECT_EQ(CMTranscation::getCurTranscation(), &inner);
            EXPECT_EQ(host.undo.depth, 2);
        }
        EXPECT_EQ(CMTranscation::getCurTranscation(), &outer);
        EXPECT_EQ(host.undo.depth, 1);
    }
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    EXPECT_EQ(host.window.text(), "[outer [inner inner] outer] ");
}

TEST_F(Transaction, IsClosedByAnException) {
    setGeneral("CMOperationEndSeparator", "<end>");
    try {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
        throw std::runtime_error("the operation failed");
    } catch (const std::runtime_error &) {
    }
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_EQ(host.window.text(), "<end>");
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
}

TEST_F(Transaction, ExpandsItsKeywordsEverywhere) {
    setGeneral("CMOperationStartSeparator", "$Operation by $User on $Date at $Time ($Time)\n");
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, "Send"); }
    EXPECT_EQ(host.window.text(), "Send by ann on 2024-03-01 at 10:20:30 (10:20:30)\n");
}

/// Two keywords, the earlier one of which is replaced first.
struct KeywordPair {
    const char *earlier;
    const char *later;
};

class KeywordOrder : public Transaction, public testing::WithParamInterface<KeywordPair> {
  protected:
    /// The start separator "$keyword", where the values of all keywords are plain but for that of this one.
    std::string expanded(const std::string &keyword, const std::string &value) {
        const auto valueOf = [&](const char *name) { return keyword == name ? value : std::string("plain"); };
        host.places.time = valueOf("Time");
        host.places.date = valueOf("Date");
        host.places.user = valueOf("User");
        setGeneral("CMOperationStartSeparator", "$" + keyword);
        host.window.stream.str({});
        { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, valueOf("Operation")); }
        return host.window.text();
    }
};

TEST_P(KeywordOrder, ReplacesWhatAnEarlierKeywordBringsInAndNotWhatALaterOneDoes) {
    const auto [earlier, later] = GetParam();
    EXPECT_EQ(expanded(earlier, std::string("$") + later), "plain");
    EXPECT_EQ(expanded(later, std::string("$") + earlier), std::string("$") + earlier);
}
INSTANTIATE_TEST_SUITE_P(Transaction, KeywordOrder,
                         testing::Values(KeywordPair{"Time", "Date"}, KeywordPair{"Time", "User"},
                                         KeywordPair{"Time", "Operation"}, KeywordPair{"Date", "User"},
                                         KeywordPair{"Date", "Operation"}, KeywordPair{"User", "Operation"}),
                         [](const auto &row) {
                             return std::string(row.param.earlier) + "Before" + row.param.later;
                         });

TEST_F(Transaction, LeavesAKeywordInSmallLettersAlone) {
    setGeneral("CMOperationStartSeparator", "$time $date $user $operation");
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    EXPECT_EQ(host.window.text(), "$time $date $user $operation");
}

TEST_F(Transaction, PrintsNothingForAnEmptySeparatorAndAPlainOneAsItIs) {
    setGeneral("CMOperationStartSeparator", "");
    setGeneral("CMOperationEndSeparator", "----");
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    EXPECT_EQ(host.window.text(), "----");
}

TEST_F(Transaction, ClearsTheWindowAtItsStartIfTheProjectSaysSo) {
    setGeneral("CMClearWindowBeforeOperation", "True");
    setGeneral("CMOperationStartSeparator", "<start>");
    host.window.stream << "from before";
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    EXPECT_EQ(host.window.text(), "<start>");
    EXPECT_THAT(host.callsOf("clear"), ElementsAre("clear window"));
}

TEST_F(Transaction, ClearsNothingUnlessToldToOrWithoutAWindow) {
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    setGeneral("CMClearWindowBeforeOperation", "False");
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    setGeneral("CMClearWindowBeforeOperation", "True");
    host.window.hasWindow = false;
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    EXPECT_THAT(host.callsOf("clear"), IsEmpty());
}

TEST_F(Transaction, WritesNothingWithoutAManagerAStreamOrAProject) {
    setGeneral("CMOperationStartSeparator", "<start>");
    setGeneral("CMOperationEndSeparator", "<end>");
    setGeneral("CMClearWindowBeforeOperation", "True");
    host.window.managerExists = false;
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    host.window.managerExists = true;
    host.window.hasStream = false;
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    host.window.hasStream = true;
    host.model.activeProject = nullptr;
    { const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, ""); }
    EXPECT_EQ(host.window.text(), "");
    EXPECT_THAT(host.callsOf("clear"), IsEmpty());
}

TEST_F(Transaction, SkipsTheEndSeparatorIfTheProjectWentAway) {
    setGeneral("CMOperationStartSeparator", "<start>");
    setGeneral("CMOperationEndSeparator", "<end>");
    {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckIn, "");
        host.model.activeProject = nullptr;
    }
    EXPECT_EQ(host.window.text(), "<start>");
    EXPECT_EQ(host.undo.depth, 0);
}

TEST_F(Transaction, TellsItsTypeAndItsNameOrThatOfItsType) {
    const CMTranscation plain(nullptr, 1, CMTxnUndoCheckOut, "");
    EXPECT_EQ(plain.getTranscationType(), CMTxnUndoCheckOut);
    EXPECT_EQ(plain.getOperationName(), resources::text(Text::operationUndoCheckOut));
    const CMTranscation named(nullptr, 1, CMTxnTool, "Invoke");
    EXPECT_EQ(named.getOperationName(), "Invoke");
}

class OperationName : public testing::TestWithParam<std::pair<int, Text>> {};

TEST_P(OperationName, OfAType) {
    EXPECT_EQ(CMTranscation::getOperationNameFromType(static_cast<CMTranscationType>(GetParam().first)),
              resources::text(GetParam().second));
}
INSTANTIATE_TEST_SUITE_P(
    Transaction, OperationName,
    testing::Values(std::pair(0, Text::operationLock), std::pair(1, Text::operationFetch),
                    std::pair(2, Text::operationUnlock), std::pair(3, Text::operationHistory),
                    std::pair(4, Text::operationCheckIn), std::pair(5, Text::operationCheckOut),
                    std::pair(6, Text::operationAdd), std::pair(7, Text::operationAddDirectory),
                    std::pair(8, Text::operationMove), std::pair(9, Text::operationUndoCheckOut),
                    std::pair(10, Text::operationProperties), std::pair(11, Text::operationListArchive),
                    std::pair(12, Text::operationDelete), std::pair(13, Text::operationDeleteDirectory),
                    std::pair(14, Text::operationRename), std::pair(15, Text::operationConnect),
                    std::pair(16, Text::operationTool), std::pair(17, Text::operationTool),
                    std::pair(31, Text::operationTool), std::pair(32, Text::operationTool),
                    std::pair(1000, Text::operationTool), std::pair(-1, Text::operationTool)),
    [](const auto &row) {
        const int type = row.param.first;
        return type < 0 ? "Minus" + std::to_string(-type) : std::to_string(type);
    });

class Validity : public CoreFixture {
  protected:
    [[nodiscard]] bool isValid() {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
        return transaction.isValidTranscation();
    }
};

TEST_F(Validity, NeedsAnActiveProjectAndSaysNothingWithoutOne) {
    host.model.activeProject = nullptr;
    EXPECT_FALSE(isValid());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Validity, HoldsWithATool) { EXPECT_TRUE(isValid()); }

class NoTool : public Validity, public testing::WithParamInterface<const char *> {};

TEST_P(NoTool, IsToldToTheUser) {
    host.setTool(GetParam());
    EXPECT_FALSE(isValid());
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::noToolSelected));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_EQ(host.messages.shown[0].level, 2);
}
INSTANTIATE_TEST_SUITE_P(Validity, NoTool, testing::Values("None", "NONE", "none"),
                         [](const auto &row) { return std::string(row.param); });

TEST_F(Validity, DoesNotReadTheToolWithAProviderRoute) {
    host.setTool("None");
    setProviderRoute();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    host.clearRecords(); // whatever was said about the provider
    EXPECT_TRUE(isValid());
    EXPECT_THAT(host.messages.shown, IsEmpty());
    for (const auto &lookup : host.lookups) {
        EXPECT_NE(lookup.property.key, IPN::CMTool);
    }
}

TEST(ValidityWithoutProperties, HoldsIfTheToolPropertyDoesNotExist) {
    RecordingHost host;
    CMProperty::ResetIfActiveProjectChanged(); // forgets the project of the last test
    host.addProject();
    const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
    EXPECT_TRUE(transaction.isValidTranscation());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

} // namespace
