// Tests the question about a writable file in all four operations.
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMRecCheckOut.h"
#include "CM/CMSupport/command/CMRecCheckOutFromArchive.h"
#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class CheckOutQuestion : public CheckOutFixture {
  protected:
    int checkOut(std::initializer_list<IUnit *> given) {
        units = CMUnitList(given);
        return CMCheckOut()(units, args, diags, false);
    }
    IUnit &writableUnit(const CString &name) {
        IUnit &unit = host.addUnit(name);
        makeWritable(unit);
        return unit;
    }

    CMUnitList units;
};

TEST_F(CheckOutQuestion, IsAskedForAWritableFileWithItsNames) {
    auto &pump = writableUnit("Pump");
    driver.onShown = [&pump](CDialog &dialog) {
        const std::string text = dialog.control("text")->caption().str();
        const auto name = text.find("\"" + pump.getFileName().str() + "\"");
        const auto fullName = text.find(pump.getFullFileName().str());
        EXPECT_NE(name, std::string::npos) << text;
        EXPECT_NE(fullName, std::string::npos) << text;
        EXPECT_LT(name, fullName);
        EXPECT_FALSE(dialog.control("cancel")->isEnabled());
    };
    answer("yes");
    EXPECT_EQ(checkOut({&pump}), 1);
    EXPECT_EQ(driver.shown().size(), 1U);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
}

TEST_F(CheckOutQuestion, IsAskedForAnEmbeddedFileToo) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    makeWritable(notes);
    answer("no");
    EXPECT_EQ(checkOut({&notes}), 0);
    auto given = list(&notes);
    answer("no");
    EXPECT_EQ(CMRecCheckOut()(given, args, diags, false), 0);
    EXPECT_EQ(driver.shown().size(), 2U);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(CheckOutQuestion, ASkippedUnitHasNothingDoneForItAndTheResultIsThatOfBefore) {
    setToolProperty(IPN::CMArchiveSelection, "File");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    answer("no");
    auto &pump = writableUnit("Pump");
    EXPECT_EQ(checkOut({&pump}), 0) << "nothing was before";
    EXPECT_THAT(calls(), ElementsAre("reloads open", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    answer("no");
    EXPECT_EQ(checkOut({&host.addUnit("Valve"), &pump}), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Valve.ocl"));
}

TEST_F(CheckOutQuestion, ComesWithThePropertyYesOrAnythingButNo) {
    auto &pump = writableUnit("Pump");
    for (const char *value : {"yes", "Yes", "", "Never"}) {
        setToolProperty("AskOnCheckoutReadWrite", value);
        answer("no");
        EXPECT_EQ(checkOut({&pump}), 0) << value;
    }
    EXPECT_EQ(driver.shown().size(), 4U);
}

TEST_F(CheckOutQuestion, NeverComesWithThePropertyNo) {
    auto &pump = writableUnit("Pump");
    for (const char *value : {"No", "no", "NO"}) {
        setToolProperty("AskOnCheckoutReadWrite", value);
        EXPECT_EQ(checkOut({&pump}), 1) << value;
    }
    EXPECT_THAT(driver.shown(), IsEmpty());
}

TEST_F(CheckOutQuestion, OnTheProviderRouteIsNotReadUnderTheProvidersName) {
    useProvider();
    host.setToolDefault("Basalt", "AskOnCheckoutReadWrite", "No");
    answer("no");
    EXPECT_EQ(checkOut({&writableUnit("Pump")}), 0);
    EXPECT_EQ(driver.shown().size(), 1U);
}

TEST_F(CheckOutQuestion, NeverComesForAReadOnlyFile) {
    auto &pump = host.addUnit("Pump");
    host.places.writable[pump.getFullFileName()] = false;
    EXPECT_EQ(checkOut({&pump}), 1);
    EXPECT_THAT(driver.shown(), IsEmpty());
}

TEST_F(CheckOutQuestion, NobodyToAskSkipsTheUnit) {
    host.environment.hasInterfaceToUser = false;
    EXPECT_EQ(checkOut({&writableUnit("Pump")}), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(CheckOutQuestion, AnAnswerForAllHoldsForTheRestOfTheBatch) {
    const CMAskOnCheckoutGuard guard;
    answer("noToAll");
    EXPECT_EQ(checkOut({&writableUnit("Pump"), &writableUnit("Valve"), &host.addUnit("Motor")}), 1);
    EXPECT_EQ(driver.shown().size(), 1U);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Motor.ocl"));
}

TEST_F(CheckOutQuestion, RecursiveCheckOutAsksAboutTheUnit) {
    auto &pump = writableUnit("Pump");
    auto given = list(&pump, &host.addUnit("Valve"));
    answer("no");
    EXPECT_EQ(CMRecCheckOut()(given, args, diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Valve.ocl"));
    EXPECT_EQ(given.GetCount(), 2);
}

TEST_F(CheckOutQuestion, ArchiveFormsAskAboutTheUnitOfTheItem) {
    auto &pump = writableUnit("Pump");
    CMArchiveItem item("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    CMArchiveItemList items;
    CMArchiveItem *entry = &item;
    items.AddTail(entry);
    driver.onShown = [&pump](CDialog &dialog) {
        EXPECT_THAT(dialog.control("text")->caption().str(), HasSubstr(pump.getFullFileName().str()));
    };
    answer("no");
    EXPECT_EQ(CMCheckOutFromArchive()(items, args, diags), 0);
    answer("no");
    EXPECT_EQ(CMRecCheckOutFromArchive()(items, args, diags), 0);
    EXPECT_EQ(driver.shown().size(), 2U);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(CheckOutQuestion, ArchiveFormsFindTheUnitByTheNameThatTheModelKnowsItBy) {
    host.model.fullPathRepFiles = true;
    writableUnit("Pump");
    CMArchiveItem item("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    CMArchiveItemList items;
    CMArchiveItem *entry = &item;
    items.AddTail(entry);
    answer("no");
    EXPECT_EQ(CMRecCheckOutFromArchive()(items, args, diags), 0);
    EXPECT_EQ(driver.shown().size(), 1U);
}

TEST_F(CheckOutQuestion, AnItemWithoutAUnitRaisesNoQuestion) {
    CMArchiveItem item("New.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    host.places.writable[item.getFullUnitFileName()] = true;
    CMArchiveItemList items;
    CMArchiveItem *entry = &item;
    items.AddTail(entry);
    EXPECT_EQ(CMRecCheckOutFromArchive()(items, args, diags), 1);
    EXPECT_THAT(driver.shown(), IsEmpty());
}

} // namespace
