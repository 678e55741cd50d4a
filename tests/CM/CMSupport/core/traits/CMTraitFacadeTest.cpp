// Tests the default header, and what is read from the header of a unit.
#include "CM/CMSupport/core/CMTraitFacade.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <sys/stat.h>

using testing::HasSubstr;
using testing::Not;

namespace {

class DefaultHeader : public CoreFixture {
  protected:
    std::string headerOf(const std::string &content) {
        write(scratch / "header.txt", content);
        setToolProperty(IPN::CMHeaderFile, (scratch / "header.txt").string());
        return CMTraitFacade::getDefaultHeader().str();
    }
};

TEST_F(DefaultHeader, IsTheTextOfTheToolsFile) { EXPECT_EQ(headerOf("$Id$\n$Locker$\n"), "$Id$\n$Locker$\n"); }

TEST_F(DefaultHeader, NamesOfDirectoriesInTheFilesNameAreExpanded) {
    write(scratch / "header.txt", "of the project");
    setToolProperty(IPN::CMHeaderFile, "$orpdirectory/header.txt");
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "of the project");
    host.places.root = scratch.string();
    setToolProperty(IPN::CMHeaderFile, "$OQROOT\\header.txt");
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "of the project") << "either separator";
}

TEST_F(DefaultHeader, AnotherNameInItIsExpandedAlsoWithoutARoot) {
    write(scratch / "header.txt", "here");
    host.places.root = "";
    setToolProperty(IPN::CMHeaderFile, "$orpdirectory/header.txt");
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "here");
}

TEST_F(DefaultHeader, IsCutAtAByte255) {
    EXPECT_EQ(headerOf("before\xff"
                       "behind"),
              "before");
    EXPECT_EQ(headerOf("\xff"
                       "behind"),
              "");
    EXPECT_EQ(headerOf("before\xff"), "before");
    EXPECT_EQ(headerOf("\xfe\x80"), "\xfe\x80") << "no other byte cuts it";
}

TEST_F(DefaultHeader, KeepsNulsAndLineEndsAsTheyAre) {
    const std::string odd("a\0b\r\nc", 6);
    EXPECT_EQ(headerOf(odd), odd);
}

TEST_F(DefaultHeader, OfAnEmptyFileIsEmpty) { EXPECT_EQ(headerOf(""), ""); }

TEST_F(DefaultHeader, WithoutAPropertyOrANameIsEmpty) {
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "");
    setToolProperty(IPN::CMHeaderFile, "");
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "");
}

TEST_F(DefaultHeader, OfAFileThatCannotBeReadIsEmpty) {
    setToolProperty(IPN::CMHeaderFile, (scratch / "none.txt").string());
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "");
    setToolProperty(IPN::CMHeaderFile, scratch.string());
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "") << "a directory";
}

TEST_F(DefaultHeader, OfANamedPipeIsEmptyAndNobodyWaits) {
    const std::string pipe = (scratch / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    setToolProperty(IPN::CMHeaderFile, pipe);
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "");
}

TEST_F(DefaultHeader, IsThatOfTheToolInUse) {
    write(scratch / "other.txt", "other");
    host.setToolDefault("CVS", IPN::CMHeaderFile, (scratch / "other.txt").string());
    EXPECT_EQ(headerOf("RCS"), "RCS");
    host.setTool("CVS");
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "other");
}

TEST_F(DefaultHeader, OnTheProviderRouteIsThatOfAllProvidersWhateverTheirName) {
    write(scratch / "named.txt", "of one provider");
    write(scratch / "all.txt", "of all");
    setProviderRoute();
    CMProperty::setSCCToolName("Basalt");
    host.setToolDefault("Basalt", IPN::CMHeaderFile, (scratch / "named.txt").string());
    host.setToolDefault("SCC", IPN::CMHeaderFile, (scratch / "all.txt").string());
    EXPECT_EQ(CMTraitFacade::getDefaultHeader(), "of all");
    CMProperty::setSCCToolName("");
}

// --- What a unit's header says: locker and version go the same way.

struct Row {
    std::string name;
    CString (*get)(const IUnit *);
    const CString *key;
    std::string label; ///< in the trace
};
void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }

const Row rows[] = {{"Locker", CMTraitFacade::getLocker, &IPN::CMHeaderItsLocker, "Locker"},
                    {"Version", CMTraitFacade::getVersion, &IPN::CMHeaderItsVersion, "version"}};

class UnitHeader : public CoreFixture, public testing::WithParamInterface<Row> {
  protected:
    UnitHeader() {
        pump_ = &host.addUnit("Pump");
        pump_->header = "$Id: Pump.ocl 1.4 ann $";
        setToolProperty(*GetParam().key, "ocl (\\S+)");
        traceOn();
    }
    [[nodiscard]] std::string get() const { return GetParam().get(pump_).str(); }
    [[nodiscard]] recording::Class &pump() const { return *pump_; }

  private:
    recording::Class *pump_ = nullptr;
};

std::string rowName(const testing::TestParamInfo<Row> &info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Each, UnitHeader, testing::ValuesIn(rows), rowName);

TEST_P(UnitHeader, GivesWhatTheToolsPatternFindsAndTracesIt) {
    EXPECT_EQ(get(), "1.4");
    EXPECT_THAT(shown.str(), testing::EndsWith("+++ " + GetParam().label + ": '1.4'\n"));
}

TEST_P(UnitHeader, OfAUnitWithoutOneIsEmptyAndNoPropertyIsRead) {
    pump().header = "";
    EXPECT_EQ(get(), "");
    EXPECT_TRUE(host.lookups.empty());
    EXPECT_EQ(shown.str(), "");
}

TEST_P(UnitHeader, ThatDoesNotMatchGivesTheEmptyTextAndATraceLine) {
    pump().header = "$Id$";
    EXPECT_EQ(get(), "");
    EXPECT_THAT(shown.str(), HasSubstr("Failed to match"));
    EXPECT_THAT(shown.str(), testing::EndsWith("+++ \n"));
    EXPECT_THAT(shown.str(), Not(HasSubstr(GetParam().label + ": ")));
}

TEST_P(UnitHeader, WithAnEmptyPatternGivesTheEmptyTextAndTheTraceShowsItSo) {
    setToolProperty(*GetParam().key, "");
    EXPECT_EQ(get(), "");
    EXPECT_THAT(shown.str(), testing::EndsWith("+++ " + GetParam().label + ": ''\n"));
}

TEST_P(UnitHeader, WithoutAPatternGivesTheEmptyText) {
    host.setTool("PlainTool");
    EXPECT_EQ(get(), "");
    EXPECT_THAT(shown.str(), Not(HasSubstr(GetParam().label + ": ")));
}

TEST_P(UnitHeader, TracesNothingWhileTheTraceIsOff) {
    host.setSetting("DEBUG_CM", "FALSE");
    EXPECT_EQ(get(), "1.4");
    EXPECT_EQ(shown.str(), "");
}

} // namespace
