// Tests the query of states.
#include "CM/CMSupport/provider/SccQuery.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

class QueryFixture : public ProviderFixture {
  protected:
    QueryFixture() {
        project().showStatus = true;
        CMProperty::getSCCdll().LoadDll(DOUBLE_PROVIDER);
        for (auto *const unit : {&pump, &valve, &tank}) {
            unit->cmState = 99;
        }
        state(pump, 1);
        state(valve, 3);
        state(tank, 5);
        host.clearRecords();
    }
    void state(const recording::Class &unit, long value) { provider->states[path(unit)] = value; }
    [[nodiscard]] static std::string path(const recording::Class &unit) { return unit.getFullFileName().str(); }
    [[nodiscard]] std::vector<long> states() const { return {pump.cmState, valve.cmState, tank.cmState}; }
    void expectNoQuery() {
        EXPECT_THAT(provider->calls, IsEmpty());
        EXPECT_THAT(host.logLines, IsEmpty());
        EXPECT_THAT(states(), ElementsAre(99, 99, 99));
    }

    int place = 0;
    void *const context = &place;
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    recording::Class &tank = host.addUnit("Tank");
};

// --- Files.

class SccQueryOfFiles : public QueryFixture {};

TEST_F(SccQueryOfFiles, AsksForAllInOneCallAndLogsTheFirst) {
    long status[] = {-7, -7, -7};
    const CStringList files{"/a", "/b", "/c"};
    provider->states = {{"/a", 1}, {"/b", 2}, {"/c", 4}};
    EXPECT_EQ(SccQuery::query(files, status, context), 0);
    EXPECT_THAT(status, ElementsAre(1, 2, 4));
    EXPECT_THAT(effects(), ElementsAre("log: Invoking SccQueryInfo on Scc dll for the following files:\n\t/a\n",
                                       "provider SccQueryInfo context=0 files=/a,/b,/c",
                                       "log: Scc dll returned 0 from SccQueryInfo"));
    EXPECT_EQ(host.logsOpen, 0);
}

TEST_F(SccQueryOfFiles, LogsOneFileInFull) {
    long status = 0;
    SccQuery::query({"/a"}, &status, context);
    EXPECT_EQ(effects().front(), "log: Invoking SccQueryInfo on Scc dll for the following files:\n\t/a\n");
}

TEST_F(SccQueryOfFiles, ReturnsTheProvidersResult) {
    long status = 0;
    provider->answer("SccQueryInfo", SCC_E_PROJNOTOPEN);
    EXPECT_EQ(SccQuery::query({"/a"}, &status, context), SCC_E_PROJNOTOPEN);
    EXPECT_EQ(effects().back(), "log: Scc dll returned -25 from SccQueryInfo");
}

TEST_F(SccQueryOfFiles, WithoutAContextReturnsMinusOneAndCallsNothing) {
    long status = 7;
    EXPECT_EQ(SccQuery::query({"/a"}, &status, nullptr), -1);
    EXPECT_EQ(status, 7);
    expectNoQuery();
}

// --- One unit.

class SccQueryOfAUnit : public QueryFixture {};

TEST_F(SccQueryOfAUnit, StoresTheStatusUnchanged) {
    state(pump, 0x7FFF1003L);
    SccQuery::queryAndSetStatus(&pump, context);
    EXPECT_EQ(pump.cmState, 0x7FFF1003L);
    ASSERT_THAT(effects(), SizeIs(4));
    EXPECT_EQ(effects()[0],
              "log: Invoking SccQueryInfo on Scc dll for the following file:\n\t" + path(pump) + "\n");
    EXPECT_EQ(effects()[1], "provider SccQueryInfo context=0 files=" + path(pump));
    EXPECT_EQ(effects()[2], "log: Returned from SccQueryInfo on Scc dll");
}

TEST_F(SccQueryOfAUnit, KeepsTheStateIfTheCallFails) {
    for (const long result : {static_cast<long>(SCC_E_ACCESSFAILURE), static_cast<long>(SCC_I_RELOADFILE)}) {
        provider->answer("SccQueryInfo", result);
        SccQuery::queryAndSetStatus(&pump, context);
        EXPECT_EQ(pump.cmState, 99);
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(SccQueryOfAUnit, IsNotMadeWhileStatesAreNotOnDisplay) {
    project().showStatus = false;
    SccQuery::queryAndSetStatus(&pump, context);
    expectNoQuery();
}

TEST_F(SccQueryOfAUnit, IsNotMadeForNullOrWithoutAContext) {
    SccQuery::queryAndSetStatus(static_cast<IUnit *>(nullptr), context);
    SccQuery::queryAndSetStatus(&pump, nullptr);
    expectNoQuery();
}

// --- Several units.

class SccQueryOfUnits : public QueryFixture {
  protected:
    void query(CMUnitList units) { SccQuery::queryAndSetStatus(units, context); }
};

TEST_F(SccQueryOfUnits, AsksForAllInOneCallThenStoresAndLogsEach) {
    query({&pump, &valve, &tank});
    EXPECT_THAT(states(), ElementsAre(1, 3, 5));
    EXPECT_THAT(
        effects(),
        ElementsAre("log: Invoking SccQueryInfo on Scc dll for the following files:\n\t" + path(pump) + "\n",
                    "provider SccQueryInfo context=0 files=" + path(pump) + "," + path(valve) + "," + path(tank),
                    "log: Scc dll returned 0 from SccQueryInfo", "set state Pump 1",
                    "log: Status of Class Pump is 1", "set state Valve 3", "log: Status of Class Valve is 3",
                    "set state Tank 5", "log: Status of Class Tank is 5"));
}

TEST_F(SccQueryOfUnits, ANullEntryShiftsTheStatesAfterIt) {
    query({&pump, nullptr, &valve, &tank});
    EXPECT_THAT(provider->calls.front(), HasSubstr("files=" + path(pump) + "," + path(valve) + "," + path(tank)));
    EXPECT_THAT(states(), ElementsAre(1, 5, 0));
}

TEST_F(SccQueryOfUnits, KeepTheirStatesIfTheCallFails) {
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    query({&pump, &valve});
    EXPECT_THAT(states(), ElementsAre(99, 99, 99));
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(effects(), Not(Contains(HasSubstr("Status of"))));
}

TEST_F(SccQueryOfUnits, IsNotMadeWithoutAContext) {
    CMUnitList units{&pump};
    SccQuery::queryAndSetStatus(units, nullptr);
    expectNoQuery();
}

TEST_F(SccQueryOfUnits, IsNotMadeWhileStatesAreNotOnDisplay) {
    project().showStatus = false;
    query({&pump, &valve});
    expectNoQuery();
    setProviderProperty("QuerySCCStatusOneByOne", "True");
    query({&pump, &valve});
    expectNoQuery();
}

TEST_F(SccQueryOfUnits, GoesOneByOneIfTheProjectWantsThat) {
    setProviderProperty("QuerySCCStatusOneByOne", "True");
    query({&pump, nullptr, &valve});
    EXPECT_THAT(states(), ElementsAre(1, 3, 99)) << "nothing shifts";
    EXPECT_THAT(provider->calls, ElementsAre("SccQueryInfo context=0 files=" + path(pump),
                                             "SccQueryInfo context=0 files=" + path(valve)));
}

TEST_F(SccQueryOfUnits, AreAskedForInOneCallIfTheProjectDoesNotWantOneByOne) {
    setProviderProperty("QuerySCCStatusOneByOne", "False");
    query({&pump, &valve});
    EXPECT_THAT(provider->calls, SizeIs(1));
}

TEST_F(SccQueryOfUnits, WithoutAProjectAsksInOneCall) {
    setProviderProperty("QuerySCCStatusOneByOne", "True");
    CMProperty::getShowCMStatus(); // the last answer counts while no project is open
    host.model.activeProject = nullptr;
    query({&pump, &valve});
    EXPECT_THAT(provider->calls, SizeIs(1));
}

// --- Items.

class SccQueryOfItems : public QueryFixture {
  protected:
    SccQueryOfItems() {
        host.reload.filesInUnit = [this](const IUnit *unit, CStringList &files, int recursive, int information) {
            flags = {recursive, information};
            files.AddTail(unit->getNameForReposFiles());
            for (const CString &file : further) {
                files.AddTail(file);
            }
        };
    }
    void query(const std::vector<CString> &paths, int recursive) {
        CMArchiveItemListWrapper items;
        for (const CString &item : paths) {
            items.addTail(new CMArchiveItem(item, "", CMArchiveItem::readOnly, "", ""));
        }
        CMArchiveItem *none = nullptr;
        items.list().AddHead(none);
        SccQuery::queryAndSetStatus(items.list(), context, recursive);
    }
    std::pair<int, int> flags;
    std::vector<CString> further;
};

TEST_F(SccQueryOfItems, AsksForTheirUnitsByTheNameOfTheirFile) {
    query({"/archive/Pump.ocl", "C:\\archive\\Valve.ocl"}, 0);
    EXPECT_THAT(provider->calls, ElementsAre("SccQueryInfo context=0 files=" + path(pump) + "," + path(valve)));
    EXPECT_THAT(states(), ElementsAre(1, 3, 99));
    EXPECT_EQ(flags, std::pair(0, 0));
}

TEST_F(SccQueryOfItems, AsksByTheFullPathIfTheHostKnowsItsFilesByThat) {
    host.model.fullPathRepFiles = true;
    pump.reposName = "/archive/Pump.ocl";
    query({"/archive/Pump.ocl", "/archive/Valve.ocl"}, 0);
    EXPECT_THAT(states(), ElementsAre(1, 99, 99));
}

TEST_F(SccQueryOfItems, PassesTheFlagForTheUnitsBelowOn) {
    further = {"Tank.ocl"};
    query({"Pump.ocl"}, 1);
    EXPECT_EQ(flags, std::pair(1, 0));
    EXPECT_THAT(states(), ElementsAre(1, 99, 5));
}

TEST_F(SccQueryOfItems, SkipsItemsAndFilesWithoutAUnit) {
    further = {"Gone.ocl"};
    query({"Nobody.ocl", "Pump.ocl"}, 0);
    EXPECT_THAT(provider->calls, ElementsAre("SccQueryInfo context=0 files=" + path(pump)));
}

TEST_F(SccQueryOfItems, GoesOneByOneIfTheProjectWantsThat) {
    setProviderProperty("QuerySCCStatusOneByOne", "True");
    query({"Pump.ocl", "Valve.ocl"}, 0);
    EXPECT_THAT(provider->calls, SizeIs(2));
}

} // namespace
