// Tests both forms of check out from the archive.
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMRecCheckOutFromArchive.h"
#include "CM/CMSupport/resources/Format.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <list>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class CheckOutFromArchive : public CheckOutFixture {
  protected:
    CMArchiveItem *item(const CString &path) {
        return &made_.emplace_back(path, "1.1", CMArchiveItem::readOnly, "", "");
    }
    template <class OPERATION = CMCheckOutFromArchive> int checkOut(std::initializer_list<CMArchiveItem *> given) {
        items.RemoveAll();
        for (CMArchiveItem *entry : given) {
            items.AddTail(entry);
        }
        return OPERATION()(items, args, diags);
    }
    int recCheckOut(std::initializer_list<CMArchiveItem *> given) {
        return checkOut<CMRecCheckOutFromArchive>(given);
    }
    [[nodiscard]] std::string directory() const { return unitsDirectory().string(); }

    CMArchiveItemList items;

  private:
    std::list<CMArchiveItem> made_;
};

TEST_F(CheckOutFromArchive, RunsAndReloadsAKnownUnitInThisOrder) {
    host.addUnit("Pump");
    EXPECT_EQ(checkOut({item("Pump.ocl")}), 1);
    const std::string log = "log 4 ../CM/CMSupport/CheckOutFromArchive: ";
    EXPECT_THAT(
        calls(),
        ElementsAre("reloads open",
                    log + "Executing the following command to check out the file from the archive: coa Pump.ocl",
                    "run coa Pump.ocl", log + "Check out from the archive command returned the following: ",
                    log + "Performing ATM for the file Pump.ocl", "can reload Pump flag=0 -> 1",
                    "reload scope start", "reload Pump flag=0", "reload scope end", "reloads close"));
    expectNothingIsLeft();
}

TEST_F(CheckOutFromArchive, AFileThatTheModelDoesNotKnowIsLoadedAndRemembered) {
    IUnit *loaded = nullptr;
    host.reload.addToModel = [&](const CString &, const CString &, int) { return loaded = &host.addUnit("New"); };
    EXPECT_EQ(checkOut({item("New.ocl")}), 1);
    EXPECT_THAT(host.calls, Contains("loader start " + directory()));
    EXPECT_THAT(host.calls, Contains("add to model New.ocl flag=0"));
    EXPECT_THAT(host.calls, Contains("add to saved units New"));
}

TEST_F(CheckOutFromArchive, AFileIsLoadedByThePathThatTheModelKnowsItBy) {
    host.model.fullPathRepFiles = true;
    checkOut({item("sub/New.ocl")});
    EXPECT_THAT(host.calls, Contains("loader start " + directory() + "/sub"));
    EXPECT_THAT(host.calls, Contains("add to model " + directory() + "/sub/New.ocl flag=0"));
}

TEST_F(CheckOutFromArchive, AUnitInAnotherDirectoryThanTheItemsIsLoadedAnew) {
    auto &pump = host.addUnit("Pump");
    pump.directory = directory() + "/elsewhere";
    host.reload.addToModel = [&](const CString &, const CString &, int) { return &pump; };
    EXPECT_EQ(checkOut({item("Pump.ocl")}), 1);
    EXPECT_THAT(host.callsOf("reload "), IsEmpty());
    EXPECT_THAT(host.calls, Contains("add to model Pump.ocl flag=0"));
}

TEST_F(CheckOutFromArchive, AUnitThatCannotBeReloadedInPlaceIsLoadedAnew) {
    auto &pump = host.addUnit("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&](const CString &, const CString &, int) { return &pump; };
    EXPECT_EQ(checkOut({item("Pump.ocl")}), 1);
    EXPECT_THAT(host.calls, Contains("add to model Pump.ocl flag=0"));
}

TEST_F(CheckOutFromArchive, ALoadingFailureIsReportedAndTheItemStays) {
    setToolProperty("ReportLoadingError", "Output Window");
    EXPECT_EQ(checkOut({item("New.ocl")}), 0);
    EXPECT_THAT(host.window.text(), HasSubstr("ERROR : The file \"" + directory() + "/New.ocl\""));
    EXPECT_EQ(items.GetCount(), 1);
    EXPECT_EQ(calls().back(), "reloads close") << "the list is not empty";
}

TEST_F(CheckOutFromArchive, ALoadingFailureTakesThePlaceOfTheToolsErrorsAndStandsInFrontOfTheNextOnes) {
    const std::string failure =
        resources::format(resources::Text::loadingFailed, {directory() + "/New.ocl"}) + "coa Pump.ocl?";
    host.addUnit("Pump");
    host.worker.run = [](const CString &command) { return recording::ToolRun{{}, {command + "?"}, 0}; };
    checkOut({item("New.ocl"), item("Pump.ocl")});
    EXPECT_EQ(shown.str(), "coa New.ocl\ncoa New.ocl?coa New.ocl?coa Pump.ocl\n" + failure + failure);
}

TEST_F(CheckOutFromArchive, AnItemWithoutATypeIsNeitherCommittedNorReloaded) {
    host.model.unitTypes.erase(".ory");
    useOldLayout();
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(checkOut({item("Plant.ory")}), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old") << "rolled back";
    EXPECT_FALSE(exists(scratch / "Plant.ory"));
    EXPECT_THAT(host.callsOf("reload "), IsEmpty());
    EXPECT_THAT(host.callsOf("add to model"), IsEmpty());
    EXPECT_THAT(logTexts(), Not(Contains(HasSubstr("Performing ATM"))));
}

TEST_F(CheckOutFromArchive, AProjectFileIsLookedUpWhereTheHostHasIt) {
    host.model.unitTypes[".ory"] = ".ORY"; // the type is compared with the extension, in any case of letters
    const std::string path = directory() + "/Plant.ory";
    project().reposName = path;
    EXPECT_EQ(checkOut({item("Plant.ory")}), 1);
    EXPECT_THAT(logTexts(), Contains("Performing ATM for the file " + path));
    EXPECT_THAT(host.calls, Contains("reload Plant flag=0"));
}

TEST_F(CheckOutFromArchive, AProjectFileOfTheOldFormatIsLookedUpTheSameWay) {
    host.model.unitTypes[".orp1"] = ".ORP1";
    checkOut({item("Plant.orp1")});
    EXPECT_THAT(logTexts(), Contains("Performing ATM for the file " + directory() + "/Plant.orp1"));
}

TEST_F(CheckOutFromArchive, AProjectFileWithoutAPathFallsBackOnItsRepositoryName) {
    host.model.unitTypes[".ory"] = ".ory";
    host.model.projectIsOpen = false;
    checkOut({item("Other.ory")});
    EXPECT_THAT(logTexts(), Contains("Performing ATM for the file Other.ory"));
}

TEST_F(CheckOutFromArchive, AGoodRunCommitsTheGuard) {
    useOldLayout();
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(checkOut({item("Plant.ory")}), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
}

TEST_F(CheckOutFromArchive, InBothFormsTheToolFindsNoCopyOfTheProjectFile) {
    useOldLayout();
    std::vector<bool> copied;
    host.worker.run = [&](const CString &) {
        copied.push_back(exists(scratch / "Plant.ory"));
        return recording::ToolRun{};
    };
    checkOut({item("Plant.ory")});
    recCheckOut({item("Plant.ory")});
    EXPECT_THAT(copied, ElementsAre(false, false));
}

TEST_F(CheckOutFromArchive, SkipsNullTakesDuplicatesAndSelectsNoArchive) {
    setToolProperty(IPN::CMArchiveSelection, "File");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMCheckOutFromArchive, "coa $archive $Unit");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    CMArchiveItem *const twice = item("Pump.ocl");
    EXPECT_EQ(checkOut({nullptr, twice, twice}), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("coa /archives/plant Pump.ocl", "coa /archives/plant Pump.ocl"));
}

TEST_F(CheckOutFromArchive, OpensAndClosesReloadsOnceForTheBatch) {
    host.addUnit("Pump");
    host.addUnit("Valve");
    checkOut({item("Pump.ocl"), item("Valve.ocl")});
    EXPECT_THAT(host.worker.commands, ElementsAre("coa Pump.ocl", "coa Valve.ocl"));
    EXPECT_EQ(host.callsOf("reloads open").size(), 1U);
    EXPECT_EQ(host.callsOf("reloads close").size(), 1U);
}

TEST_F(CheckOutFromArchive, AnEmptyListDoesNothing) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    EXPECT_EQ(checkOut({}), 0);
    EXPECT_EQ(recCheckOut({}), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CheckOutFromArchive, SavesWheneverThePropertyAsks) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMProperty::saveOnCheckout(0);
    host.addUnit("Pump");
    checkOut({item("Pump.ocl")});
    checkOut({item("Pump.ocl")});
    EXPECT_EQ(host.callsOf("save model").size(), 2U);
}

TEST_F(CheckOutFromArchive, SavesBeforeItOpensReloads) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    checkOut({item("Pump.ocl")});
    EXPECT_EQ(calls()[0], "save model");
    EXPECT_EQ(calls()[1], "reloads open");
}

TEST_F(CheckOutFromArchive, WithoutAToolGivesOneDiagnosticEach) {
    host.setTool("NONE");
    EXPECT_EQ(checkOut({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(recCheckOut({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 2);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CheckOutFromArchive, AsksForTheToolAlsoInAProjectOfAProvider) {
    useProvider();
    host.setTool("None");
    EXPECT_EQ(checkOut({item("Pump.ocl")}), 0);
    EXPECT_EQ(recCheckOut({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 2);
}

TEST_F(CheckOutFromArchive, ExpandsBeforeTheGuardStartsAndRecursivelyTheOtherWayRound) {
    setToolProperty(IPN::CMCheckOutFromArchive, "coa all");
    setToolProperty("AskOnCheckoutReadWrite", "No");
    CMArchiveItem *const file = item("Other.ory");
    // Making the item's argument reads the layout too, so what counts is the look-up next to the template's.
    const auto layoutLookUpsBeforeTemplate = [this] {
        const auto end = host.lookups.begin() + lookUpOf(IPN::CMCheckOutFromArchive);
        return std::count_if(host.lookups.begin(), end,
                             [](const recording::Lookup &lookup) { return lookup.property.key == "UseSCCtool"; });
    };
    checkOut({file});
    const auto expansionFirst = layoutLookUpsBeforeTemplate();
    host.lookups.clear();
    recCheckOut({file});
    EXPECT_GT(layoutLookUpsBeforeTemplate(), expansionFirst);
}

TEST_F(CheckOutFromArchive, RecursivelyRunsAndCommitsAndReloadsNothing) {
    host.addUnit("Pump");
    EXPECT_EQ(recCheckOut({item("Pump.ocl"), nullptr}), 1);
    const std::string log = "log 4 ../CM/CMSupport/RecCheckOutFromArchive: ";
    EXPECT_THAT(calls(),
                ElementsAre(log + "Executing the following command to recursively check out the file(s) "
                                  "from the archive: coa Pump.ocl",
                            "run coa Pump.ocl",
                            log + "Recursive check out from the archive command returned the following: "));
    EXPECT_EQ(items.GetCount(), 2);
    expectNothingIsLeft();
}

TEST_F(CheckOutFromArchive, RecursivelyCommitsAnItemWithoutATypeToo) {
    host.model.unitTypes.erase(".ory");
    useOldLayout();
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(recCheckOut({item("Plant.ory")}), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
}

TEST_F(CheckOutFromArchive, RecursivelySavesOnceUntilTheCallerAsksAgain) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMProperty::saveOnCheckout(1);
    recCheckOut({item("Pump.ocl")});
    recCheckOut({item("Valve.ocl")});
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
    CMProperty::saveOnCheckout(1);
    recCheckOut({item("Pump.ocl")});
    EXPECT_EQ(host.callsOf("save model").size(), 2U);
}

TEST_F(CheckOutFromArchive, RecursivelyKeepsTheRequestWhileThereIsNobodyToSave) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMProperty::saveOnCheckout(1);
    const auto save = CMFacade::saveCallbackFunc();
    CMFacade::saveCallbackFunc() = nullptr;
    recCheckOut({item("Pump.ocl")});
    CMFacade::saveCallbackFunc() = save;
    recCheckOut({item("Pump.ocl")});
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
}

TEST_F(CheckOutFromArchive, RecursivelyDoesNotSaveIfThePropertyDoesNotAsk) {
    CMProperty::saveOnCheckout(1);
    recCheckOut({item("Pump.ocl")});
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 1);
}

TEST_F(CheckOutFromArchive, OnlyTheLastItemDecidesTheResult) {
    setToolProperty(IPN::CMCheckOutFromArchive, "coa $extra $Unit");
    host.addUnit("Pump");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    EXPECT_EQ(checkOut({item("Pump.ocl"), item("Pump.ocl")}), 1);
    EXPECT_EQ(recCheckOut({item("Pump.ocl"), item("Pump.ocl")}), 0);
    args.RemoveAll();
}

} // namespace
