#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMSuppressOKMessage.h"
#include "CM/CMSupport/core/CMTargetFile.h"
#include "CM/CMSupport/core/CMWorkspace.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <functional>
#include <memory>

namespace {

class Log : public CoreFixture {
  protected:
    static std::string substituted(const CString &text) { return CMLog(text).substitute("log").str(); }
};
class Label : public testing::Test {
  protected:
    static std::string substituted(const CString &text) { return CMLabel(text).substitute("label").str(); }
};
class Mode : public CoreFixture {};

TEST_F(Log, OfOneWordIsBare) { EXPECT_EQ(substituted("fixed"), "fixed"); }

TEST_F(Log, OfTwoWordsIsEnclosedInSingleQuotes) { EXPECT_EQ(substituted("fixed it"), "'fixed it'"); }

TEST_F(Log, WithANewlineIsQuotedAsAWhole) { EXPECT_EQ(substituted("one\ntwo"), "'one\ntwo'"); }

TEST_F(Log, WithACarriageReturnIsQuotedAsAWhole) { EXPECT_EQ(substituted("one\rtwo"), "'one\rtwo'"); }

TEST_F(Log, WithATabAloneIsBare) { EXPECT_EQ(substituted("one\ttwo"), "one\ttwo"); }

TEST_F(Log, EscapesNothingInside) { EXPECT_EQ(substituted("it's $5 \\ done"), "'it's $5 \\ done'"); }

TEST_F(Log, ThatIsEmptyGivesTheEmptyText) { EXPECT_EQ(substituted(""), ""); }

TEST_F(Log, StaysBareIfCommentsAreNotToBeEnclosed) {
    setGeneral("EncloseCommentsInQuotes", "No");
    EXPECT_TRUE(CMLog::EncloseCommentsInQuotes());
    EXPECT_EQ(substituted("fixed it"), "fixed it");
}

TEST_F(Log, ReadsNoInCapitalsAsNo) {
    setGeneral("EncloseCommentsInQuotes", "NO");
    EXPECT_EQ(substituted("fixed it"), "fixed it");
}

TEST_F(Log, IsQuotedForAnyOtherValueThanNo) {
    for (const char *value : {"Yes", "", "Nope", "False"}) {
        setGeneral("EncloseCommentsInQuotes", value);
        EXPECT_FALSE(CMLog::EncloseCommentsInQuotes()) << value;
        EXPECT_EQ(substituted("fixed it"), "'fixed it'") << value;
    }
}

TEST_F(Log, IsQuotedWithoutAProject) {
    setGeneral("EncloseCommentsInQuotes", "No");
    host.model.activeProject = nullptr;
    EXPECT_FALSE(CMLog::EncloseCommentsInQuotes());
    EXPECT_EQ(substituted("fixed it"), "'fixed it'");
}

TEST_F(Log, GivesAForeignNameBackUnchanged) { EXPECT_EQ(CMLog("fixed it").substitute("label"), "label"); }

TEST_F(Log, AnswersAForeignNameWithItsTextIfCommentsStayBare) {
    setGeneral("EncloseCommentsInQuotes", "No");
    EXPECT_EQ(CMLog("fixed it").substitute("label"), "fixed it");
}

TEST_F(Label, WithoutABlankIsBare) { EXPECT_EQ(substituted("v1.2"), "v1.2"); }

TEST_F(Label, OfTwoWordsIsEnclosedInDoubleQuotes) { EXPECT_EQ(substituted("release 2"), "\"release 2\""); }

TEST_F(Label, ThatHoldsQuotesIsNotTreatedInASpecialWay) {
    EXPECT_EQ(substituted("\"v1\""), "\"v1\"");
    EXPECT_EQ(substituted("\"release 2\""), "\"\"release 2\"\"");
}

TEST_F(Label, WithATabAloneIsBare) { EXPECT_EQ(substituted("a\tb"), "a\tb"); }

TEST_F(Mode, TakesTheModeTextOfTheTool) {
    setToolProperty(IPN::CMReadOnly, "-u");
    setToolProperty(IPN::CMReadWrite, "-l");
    EXPECT_EQ(CMMode(CMMode::readOnly).substitute("mode"), "-u");
    EXPECT_EQ(CMMode(CMMode::readWrite).substitute("MODE"), "-l");
}

TEST_F(Mode, IsEmptyForAToolWithoutModeTexts) { EXPECT_EQ(CMMode(CMMode::readOnly).substitute("mode"), ""); }

TEST_F(Mode, NumbersItsModesFromZero) {
    EXPECT_EQ(static_cast<int>(CMMode::readOnly), 0);
    EXPECT_EQ(static_cast<int>(CMMode::readWrite), 1);
}

TEST_F(Mode, ReadsItsPropertyFromTheDefaultReferee) {
    setToolProperty(IPN::CMReadOnly, "-u");
    host.setProperty(project().configuration, IPN::CM, "RCS", IPN::CMReadOnly, "-own");
    EXPECT_EQ(CMMode(CMMode::readOnly).substitute("mode"), "-own");
}

struct Row {
    const char *what;
    const char *name;
    const char *inOtherCase;
    std::function<std::unique_ptr<CMArgument>()> make;
    const char *value;
};

class EachArgument : public CoreFixture, public testing::WithParamInterface<Row> {
  protected:
    EachArgument() { setToolProperty(IPN::CMReadWrite, "given"); }
};

TEST_P(EachArgument, AnswersToItsNameInAnyCase) {
    const auto argument = GetParam().make();
    EXPECT_NE(argument->isNamed(GetParam().name), 0);
    EXPECT_NE(argument->isNamed(GetParam().inOtherCase), 0);
    EXPECT_EQ(argument->substitute(GetParam().name), GetParam().value);
    EXPECT_EQ(argument->substitute(GetParam().inOtherCase), GetParam().value);
}

TEST_P(EachArgument, GivesAForeignNameBackUnchanged) {
    const auto argument = GetParam().make();
    for (const CString &name : {CString("Other"), CString(""), CString(GetParam().name) + "s"}) {
        EXPECT_EQ(argument->isNamed(name), 0) << name;
        EXPECT_EQ(argument->substitute(name), name);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, EachArgument,
    testing::Values(Row{"Log", "log", "LoG", [] { return std::make_unique<CMLog>("given"); }, "given"},
                    Row{"Label", "label", "LABEL", [] { return std::make_unique<CMLabel>("given"); }, "given"},
                    Row{"Workspace", "workspace", "WorkSpace",
                        [] { return std::make_unique<CMWorkspace>("a given one"); }, "a given one"},
                    Row{"Mode", "mode", "Mode", [] { return std::make_unique<CMMode>(CMMode::readWrite); },
                        "given"},
                    Row{"TargetFile", "targetDir", "TARGETDIR",
                        [] { return std::make_unique<CMTargetFile>("/a given/dir"); }, "/a given/dir"},
                    Row{"SuppressOKMessage", "shouldSuppressSCCOKMessage", "SHOULDsuppressSCCokMESSAGE",
                        [] { return std::make_unique<CMSuppressOKMessage>("TRUE"); }, "TRUE"}),
    [](const auto &row) { return std::string(row.param.what); });

} // namespace
