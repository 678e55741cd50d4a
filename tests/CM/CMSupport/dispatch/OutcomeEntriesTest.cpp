// Tests what the facade's entries report besides the outcomes of their operations.
#include "tests/CM/CMSupport/dispatch/EntriesFixture.h"
#include "tests/support/OutcomeRecorder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = CMOutcome::Kind;

namespace {

class OutcomeOfAnEntry : public EntriesFixture {
  protected:
    OutcomeOfAnEntry() {
        setToolProperty(IPN::CMCheckIn, "ci $Unit");
        setToolProperty(IPN::CMLockItem, "lock $Unit");
    }
    int checkIn(CMUnitList units) { return CMFacade::CheckIn(units, args, diags); }

    support::OutcomeRecorder seen;
};

TEST_F(OutcomeOfAnEntry, NamesTheOperation) {
    auto &pump = host.addUnit("Pump");
    checkIn(list(&pump));
    EXPECT_EQ(seen.last().operation, CMTxnCheckIn);
    CMUnitList units = list(&pump);
    CMFacade::LockItem(units, args, diags);
    EXPECT_EQ(seen.last().operation, CMTxnLock);
}

TEST_F(OutcomeOfAnEntry, ComesFirstForTheUnitsThatAreLeftOut) {
    auto &stub = host.addUnit("Stub");
    stub.stub = true;
    auto &reference = host.addUnit("Reference");
    reference.reference = true;
    EXPECT_EQ(checkIn(list(&host.addUnit("Pump"), &stub, &reference)), 1);
    EXPECT_THAT(seen.lines(),
                ElementsAre("Stub.ocl leftOut", "Reference.ocl leftOut", "modelSaved", "Pump.ocl done"));
    EXPECT_EQ(seen.outcomes[0].unit, &stub);
    EXPECT_EQ(seen.outcomes[0].reason, "the unit is not loaded, and was left out");
    EXPECT_EQ(seen.outcomes[1].reason, "the unit is a reference, and was left out");
}

TEST_F(OutcomeOfAnEntry, IsReportedBeforeTheBoxThatMayEndTheUnit) {
    auto &stub = host.addUnit("Stub");
    stub.stub = true;
    std::size_t reported = 0;
    host.messages.onShow = [&] { reported = seen.outcomes.size(); };
    checkIn(list(&stub));
    EXPECT_EQ(reported, 1U);
}

TEST_F(OutcomeOfAnEntry, HasNoToolInATransactionWithoutOne) {
    host.setTool("None");
    EXPECT_EQ(checkIn(list(&host.addUnit("Pump"))), 0);
    EXPECT_THAT(seen.lines(), ElementsAre("noTool"));
    EXPECT_THAT(seen.last().reason.str(), HasSubstr("No configuration management tool is selected"));
}

TEST_F(OutcomeOfAnEntry, IsMissingWithoutAProject) {
    auto &pump = host.addUnit("Pump");
    host.model.activeProject = nullptr;
    EXPECT_EQ(checkIn(list(&pump)), 0);
    EXPECT_THAT(seen.outcomes, IsEmpty());
}

} // namespace
