// Tests listing the archive through the provider.
#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/OperationFixture.h"

#include <memory>

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ListByProvider : public OperationFixture {
  protected:
    ListByProvider() { provider->enumerated = {"/w/Notes.txt", "/w/Plan.doc", "/w/Notes.txt"}; }
    ~ListByProvider() override {
        for (CMArchiveItem *const item : items) {
            const std::unique_ptr<CMArchiveItem> owned(item);
        }
    }
    int listForDialog() { return SCCFacade::SCCListArchive(items, units); }
    int listForHost() { return SCCFacade::SCCListArchive(items, args, diags); }
    /// Each item with its mode.
    [[nodiscard]] std::vector<std::string> listed() const {
        std::vector<std::string> texts;
        for (const CMArchiveItem *const item : items) {
            texts.push_back(item->getFileNameWithPath().str() + " " + std::to_string(item->getMode()) +
                            item->getVersion().str() + item->getLocker().str() + item->getStatus().str());
        }
        return texts;
    }

    recording::Class &pump = host.addUnit("Pump");
    CMUnitList units;
    CMArchiveItemList items;
};

TEST_F(ListByProvider, EnumeratesTheDirectoriesOfTheModelAndAsksForAllStatesAtOnce) {
    host.addUnit("Valve").directory = (scratch / "parts").c_str();
    project().projectFileDirectory = scratch.c_str();
    EXPECT_EQ(listForDialog(), 1);
    const std::string directories = scratch.string() + "," + unitsDirectory().string();
    EXPECT_THAT(effects()[0], "log: Invoking SccPopulateList on Scc dll");
    EXPECT_THAT(effects()[1],
                HasSubstr("provider SccPopulateList context=1 command=0 files=" + scratch.string() + ","));
    EXPECT_THAT(effects()[1], HasSubstr((scratch / "parts").string()));
    EXPECT_THAT(effects()[1], HasSubstr(" data=null flags=1"));
    Effects rest = effects();
    rest.erase(rest.begin(), rest.begin() + 2);
    EXPECT_THAT(rest, ElementsAreArray(joined({{"log: Returned from SccPopulateList on Scc dll",
                                                "log: Scc dll returned 0 from SccPopulateList"},
                                               called("SccQueryInfo", {"/w/Notes.txt", "/w/Plan.doc"}, "")})));
    EXPECT_THAT(listed(), ElementsAre("/w/Notes.txt 2", "/w/Plan.doc 2"));
}

TEST_F(ListByProvider, EnumeratesEachDirectoryOnce) {
    project().projectFileDirectory = project().directory;
    listForDialog();
    EXPECT_THAT(provider->calls[0], HasSubstr(" files=" + unitsDirectory().string() + " data"));
}

TEST_F(ListByProvider, TheModeFollowsTheState) {
    provider->enumerated = {"/w/a.txt", "/w/b.txt", "/w/c.txt"};
    provider->states = {{"/w/a.txt", SCC_STATUS_OUTEXCLUSIVE}, {"/w/b.txt", SCC_STATUS_INVALID}, {"/w/c.txt", 1}};
    listForDialog();
    EXPECT_THAT(listed(), ElementsAre("/w/a.txt 1", "/w/b.txt 0", "/w/c.txt 2"));
}

TEST_F(ListByProvider, LeavesNamesWithoutADotOutUnlessTheProjectWantsThem) {
    provider->enumerated = {"/w/Makefile", "/w.d/x"};
    listForDialog();
    EXPECT_THAT(listed(), IsEmpty());
    setGeneral("IgnoreArchiveItemsWithoutDot", "False");
    listForDialog();
    EXPECT_THAT(listed(), SizeIs(2));
}

TEST_F(ListByProvider, RemembersItsContextForItemsOnceSomethingWasFound) {
    provider->enumerated.clear();
    EXPECT_EQ(listForDialog(), 1);
    EXPECT_EQ(CMProperty::getPvContext(), nullptr);
    provider->enumerated = {"/w/Makefile"};
    listForDialog();
    EXPECT_EQ(CMProperty::getPvContext(), CMProperty::getPvContextStructList().GetHead()->getpvContextPtr());
}

TEST_F(ListByProvider, TheResultOfTheEnumerationDoesNotCount) {
    provider->answer("SccPopulateList", SCC_E_NONSPECIFICERROR);
    EXPECT_EQ(listForDialog(), 1);
    EXPECT_THAT(listed(), SizeIs(2));
    EXPECT_THAT(shownTexts(), IsEmpty());
}

TEST_F(ListByProvider, AFailingQueryIsShownAndGivesNoItems) {
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(listForDialog(), 0);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultAccessFailure)));
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("failed"));
    EXPECT_EQ(CMProperty::getPvContext(), nullptr);
}

TEST_F(ListByProvider, WithoutAProjectOrAContextGivesZero) {
    disconnect();
    EXPECT_EQ(listForDialog(), 0);
    host.model.activeProject = nullptr;
    CMProperty::getFileNamesList().AddTail("old");
    EXPECT_EQ(listForDialog(), 0);
    EXPECT_TRUE(CMProperty::getFileNamesList().IsEmpty());
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(ListByProvider, ForTheHostListsAllInTheContextOfItems) {
    useContextOfItems();
    CMProperty::getFileNamesList().AddTail("/w/old.txt");
    EXPECT_EQ(listForHost(), 0) << "required, also if it has found something";
    EXPECT_THAT(provider->calls[0], "SccPopulateList context=1 command=0 files= data=null flags=0");
    EXPECT_THAT(listed(), ElementsAre("/w/Notes.txt 2", "/w/Plan.doc 2"));
}

TEST_F(ListByProvider, ForTheHostGivesOneIfThereIsNothingAndZeroIfTheQueryFails) {
    useContextOfItems();
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    EXPECT_EQ(listForHost(), 0);
    EXPECT_THAT(shownTexts(), SizeIs(1));
    provider->enumerated.clear();
    EXPECT_EQ(listForHost(), 1);
}

} // namespace
