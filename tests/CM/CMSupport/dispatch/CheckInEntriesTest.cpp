// Tests the facade's entries that check in, lock and unlock: transaction, checks, route.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <ostream>
#include <stdexcept>

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct Row {
    std::string name;
    int (*call)(CMUnitList &, CMArgumentList &, CMDiagnosticList &);
    std::string command;
    std::string log;
    Text operation;
    bool wantsUnits;
    bool hasProviderRoute;
    bool saves;
};
void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }

const Row rows[] = {
    {"CheckIn", CMFacade::CheckIn, "ci Pump.ocl", "to check in the file: ", Text::operationCheckIn, true, true,
     true},
    {"RecCheckIn", CMFacade::RecCheckIn, "ci Pump.ocl",
     "to recursively check in the file(s): ", Text::operationCheckIn, false, true, true},
    {"LockItem", CMFacade::LockItem, "lock Pump.ocl", "to lock the file: ", Text::operationLock, false, false,
     false},
    {"UnLockItem", CMFacade::UnLockItem, "unlock Pump.ocl", "to unlock the file: ", Text::operationUnlock, false,
     false, false},
};

class CheckInEntries : public CheckOutFixture, public testing::WithParamInterface<Row> {
  protected:
    CheckInEntries() {
        setToolProperty(IPN::CMCheckIn, "ci $Unit");
        setToolProperty(IPN::CMLockItem, "lock $Unit");
        setToolProperty(IPN::CMUnLockItem, "unlock $Unit");
    }
    static const Row &row() { return GetParam(); }
    int call() { return row().call(units, args, diags); }
    recording::Class &reference(const CString &name) {
        auto &unit = host.addUnit(name);
        unit.reference = true;
        return unit;
    }

    CMUnitList units;
};

std::string rowName(const testing::TestParamInfo<Row> &info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Each, CheckInEntries, testing::ValuesIn(rows), rowName);

TEST_P(CheckInEntries, RunsItsOperationInsideATransaction) {
    units = list(&host.addUnit("Pump"));
    host.worker.run = [this](const CString &) {
        EXPECT_EQ(host.undo.depth, 1);
        return recording::ToolRun{};
    };
    EXPECT_EQ(call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(row().command));
    EXPECT_THAT(logTexts(), Contains(HasSubstr(row().log)));
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_EQ(host.callsOf("save model").size(), row().saves ? 1U : 0U);
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    expectNothingIsLeft();
}

TEST_P(CheckInEntries, WritesTheSeparatorsUnderTheNameOfItsType) {
    setGeneral("CMOperationStartSeparator", "<$Operation\n");
    setGeneral("CMOperationEndSeparator", "$Operation>\n");
    units = list(&host.addUnit("Pump"));
    call();
    const std::string name = resources::text(row().operation);
    EXPECT_EQ(host.window.text(), "<" + name + "\n" + name + ">\n");
}

TEST_P(CheckInEntries, BarsAReferenceAndWorksOnTheOthers) {
    auto &pump = host.addUnit("Pump");
    units = list(&reference("Valve"), &pump);
    EXPECT_EQ(call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(row().command));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_P(CheckInEntries, AListThatTheChecksHaveEmptiedRunsAndSavesNothing) {
    units = list(&reference("Valve"));
    host.clearRecords();
    EXPECT_EQ(call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
}

TEST_P(CheckInEntries, LeavesSavedUnitsAndCodeGenerationAlone) {
    units = list(&host.addUnit("Pump"));
    call();
    EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
    EXPECT_THAT(host.callsOf("ignore code generation"), IsEmpty());
}

TEST_P(CheckInEntries, WithoutAProjectGivesNothingAndTouchesNoList) {
    auto &pump = reference("Pump");
    units = list(&pump, &pump);
    host.model.activeProject = nullptr;
    EXPECT_EQ(call(), 0);
    EXPECT_EQ(units.GetCount(), 2);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_P(CheckInEntries, WithoutAToolTellsTheUserAndGivesNoDiagnostic) {
    host.setTool("None");
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(call(), 0);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_P(CheckInEntries, OnTheProviderRouteLocksByCommandAllTheSameAndChecksNothingIn) {
    setProviderRoute();
    for (const CString &key : {IPN::CMCheckIn, IPN::CMLockItem, IPN::CMUnLockItem}) {
        host.setToolDefault("SCC", key, "provider tool");
    }
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(call(), row().hasProviderRoute ? 0 : 1);
    const auto messageCount = [this] {
        return std::ranges::count(host.messages.shown, CString(FakeProvider::notice),
                                  &recording::MessageState::Shown::text);
    };
    if (row().hasProviderRoute) {
        EXPECT_EQ(messageCount(), 1);
        EXPECT_THAT(host.worker.commands, IsEmpty());
        EXPECT_THAT(host.callsOf("save model"), IsEmpty());
    } else {
        EXPECT_EQ(messageCount(), 0);
        EXPECT_THAT(host.worker.commands, ElementsAre("provider tool"));
    }
}

TEST_P(CheckInEntries, AnExceptionClosesTheTransaction) {
    auto &pump = host.addUnit("Pump");
    pump.onUpdateHeader = [](recording::UnitState &) { throw std::runtime_error("host"); };
    units = list(&pump);
    EXPECT_THROW(call(), std::runtime_error);
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    expectNothingIsLeft();
}

/// An operation was reached if it looks up the tool, which is the second look-up after the transaction's.
class EmptyLists : public CheckOutFixture {
  protected:
    EmptyLists() {
        auto &unit = host.addUnit("Pump");
        unit.reference = true;
        pump_ = &unit;
    }
    std::ptrdiff_t toolQuestions(const Row &row) {
        CMUnitList units = list(pump_);
        host.clearRecords();
        EXPECT_EQ(row.call(units, args, diags), 0);
        return std::ranges::count(host.lookups, IPN::CMTool,
                                  [](const recording::Lookup &lookup) { return lookup.property.key; });
    }

  private:
    recording::Class *pump_ = nullptr;
};

TEST_F(EmptyLists, EndCheckInBeforeTheOperationAndNoneOfTheOthers) {
    const std::ptrdiff_t withoutOperation = toolQuestions(rows[0]);
    for (const Row &row : rows) {
        if (row.wantsUnits) {
            EXPECT_EQ(toolQuestions(row), withoutOperation) << row.name;
        } else {
            EXPECT_GT(toolQuestions(row), withoutOperation) << row.name;
        }
    }
}

} // namespace
