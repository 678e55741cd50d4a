#include "CM/CMSupport/core/CMFacade.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Facade : public CoreFixture {};

std::vector<IUnit *> entries(const CMUnitList &units) { return {units.begin(), units.end()}; }

TEST_F(Facade, RemovesDuplicatesAndNullsAndKeepsFirstOccurrencesInOrder) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    auto &motor = host.addUnit("Motor");
    CMUnitList units{nullptr, &valve, &pump, &valve, nullptr, &motor, &pump};
    CMFacade::removeDuplicatesFromItemList(units);
    EXPECT_THAT(entries(units), ElementsAre(&valve, &pump, &motor));
    CMUnitList none;
    CMFacade::removeDuplicatesFromItemList(none);
    EXPECT_THAT(entries(none), IsEmpty());
}

TEST_F(Facade, TakesAListOfAHundredThousandUnits) {
    // The units are never read, so any addresses will do.
    std::vector<char> places(100'000);
    CMUnitList units;
    for (int round = 0; round < 2; ++round) {
        for (char &place : places) {
            units.AddTail(reinterpret_cast<IUnit *>(&place));
        }
    }
    CMFacade::removeDuplicatesFromItemList(units);
    EXPECT_EQ(units.GetCount(), 100'000);
    EXPECT_EQ(units.GetHead(), reinterpret_cast<IUnit *>(&places.front()));
    EXPECT_EQ(units.GetTail(), reinterpret_cast<IUnit *>(&places.back()));
}

TEST_F(Facade, TheStreamIsThatOfTheMainOutputer) {
    EXPECT_EQ(CMFacade::outStream(), &shown);
    std::ostringstream other;
    CMFacade::outStream() = &other;
    EXPECT_EQ(getMainCMOutputer()(), &other);
}

TEST_F(Facade, OneAccessorServesTheHostAndTheOperations) {
    EXPECT_EQ(CMFacade::saveCallbackFunc(), nullptr) << "until the host sets it";
    EXPECT_EQ(CMFacade::ATMCallbackFunc(), nullptr);
    EXPECT_EQ(CMFacade::afterATMCallbackFunc(), nullptr);
    int frames[2] = {};
    CMFacade::saveCallbackFunc() = [] {};
    CMFacade::ATMCallbackFunc() = [](CMainFrame *) {};
    CMFacade::ATMCallbackFuncParameter() = reinterpret_cast<CMainFrame *>(&frames[0]);
    CMFacade::afterATMCallbackFuncParameter() = reinterpret_cast<CMainFrame *>(&frames[1]);
    EXPECT_NE(CMFacade::saveCallbackFunc(), nullptr);
    EXPECT_NE(CMFacade::ATMCallbackFunc(), nullptr);
    EXPECT_EQ(CMFacade::afterATMCallbackFunc(), nullptr) << "each has its own place";
    EXPECT_EQ(CMFacade::ATMCallbackFuncParameter(), reinterpret_cast<CMainFrame *>(&frames[0]));
    EXPECT_EQ(CMFacade::afterATMCallbackFuncParameter(), reinterpret_cast<CMainFrame *>(&frames[1]));
    CMFacade::saveCallbackFunc() = nullptr;
    CMFacade::ATMCallbackFunc() = nullptr;
    CMFacade::ATMCallbackFuncParameter() = nullptr;
    CMFacade::afterATMCallbackFuncParameter() = nullptr;
}

TEST_F(Facade, TheDialogEntryDoesNothing) {
    CMFacade::DoCmDialog();
    EXPECT_THAT(host.calls, IsEmpty());
}

} // namespace
