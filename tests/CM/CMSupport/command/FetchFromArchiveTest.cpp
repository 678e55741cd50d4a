// Tests both forms of fetch from the archive.
#include "CM/CMSupport/command/CMFetchFromArchive.h"
#include "CM/CMSupport/command/CMRecFetchFromArchive.h"

#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMTargetFile.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <list>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FetchFromArchive : public CheckOutFixture {
  protected:
    FetchFromArchive() { setToolProperty(IPN::CMFetchFromArchive, "geta $Unit"); }
    CMArchiveItem *item(const CString &path) {
        return &made_.emplace_back(path, "1.1", CMArchiveItem::readOnly, "", "");
    }
    template <class OPERATION = CMFetchFromArchive> int fetch(std::initializer_list<CMArchiveItem *> given) {
        items.RemoveAll();
        for (CMArchiveItem *entry : given) {
            items.AddTail(entry);
        }
        return OPERATION()(items, args, diags);
    }
    int recFetch(std::initializer_list<CMArchiveItem *> given) { return fetch<CMRecFetchFromArchive>(given); }

    CMArchiveItemList items;

  private:
    std::list<CMArchiveItem> made_;
};

TEST_F(FetchFromArchive, RunsOneCommandAnItemAndTouchesNoUnit) {
    host.addUnit("Pump");
    EXPECT_EQ(fetch({item("Pump.ocl"), nullptr, item("New.ocl")}), 1);
    const std::string log = "log 4 ../CM/CMSupport/FetchFromArchive: ";
    const std::string before = log + "Executing the following command to fetch the file from the archive: geta ";
    const std::string after = log + "Fetch from the archive command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "Pump.ocl", "run geta Pump.ocl", after, before + "New.ocl",
                                     "run geta New.ocl", after));
    EXPECT_EQ(items.GetCount(), 3);
    expectNothingIsLeft();
}

TEST_F(FetchFromArchive, RecursivelyIsTheSameLoopWithWordsOfItsOwn) {
    EXPECT_EQ(recFetch({item("Pump.ocl"), item("New.ocl")}), 1);
    const std::string log = "log 4 ../CM/CMSupport/RecFetchFromArchive: ";
    const std::string before =
        log + "Executing the following command to recursively fetch the file(s) from the archive: geta ";
    const std::string after = log + "Recursive fetch from the archive command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "Pump.ocl", "run geta Pump.ocl", after, before + "New.ocl",
                                     "run geta New.ocl", after));
    expectNothingIsLeft();
}

TEST_F(FetchFromArchive, UsesNoGuard) {
    useOldLayout();
    write(scratch / "Plant.ory", "the tool's");
    EXPECT_EQ(fetch({item("Plant.ory")}), 1);
    EXPECT_EQ(recFetch({item("Plant.ory")}), 1);
    EXPECT_EQ(read(scratch / "Plant.ory"), "the tool's");
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
}

TEST_F(FetchFromArchive, TheCallersArgumentsReachTheTemplate) {
    setToolProperty(IPN::CMFetchFromArchive, "geta $mode $label $Unit $targetDir");
    setToolProperty(IPN::CMReadOnly, "-r");
    CMLabel label("two words");
    CMMode mode(CMMode::readOnly);
    CMTargetFile target("/tmp/there");
    args.AddTail(&label);
    args.AddTail(&mode);
    args.AddTail(&target);
    fetch({item("Pump.ocl")});
    recFetch({item("Pump.ocl")});
    const auto *const expected = "geta -r \"two words\" Pump.ocl /tmp/there";
    EXPECT_THAT(host.worker.commands, ElementsAre(expected, expected));
    EXPECT_EQ(args.GetCount(), 3);
    args.RemoveAll();
}

TEST_F(FetchFromArchive, TheSecondItemRunsAfterTheFirstHasFailedAndDecidesTheResult) {
    setToolProperty(IPN::CMFetchFromArchive, "geta $extra $Unit");
    ExtraArgument extra;
    args.AddTail(&extra);
    extra.answers = {false, true, true, false};
    EXPECT_EQ(fetch({item("Pump.ocl"), item("Valve.ocl")}), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("geta x Valve.ocl"));
    EXPECT_EQ(recFetch({item("Pump.ocl"), item("Valve.ocl")}), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("geta x Valve.ocl", "geta x Pump.ocl"));
    args.RemoveAll();
}

TEST_F(FetchFromArchive, AnEmptyListGivesNothing) {
    EXPECT_EQ(fetch({}), 0);
    EXPECT_EQ(recFetch({}), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(FetchFromArchive, AsksForTheToolOnTheProviderRouteToo) {
    useProvider();
    host.setToolDefault("SCC", IPN::CMFetchFromArchive, "geta $Unit");
    EXPECT_EQ(fetch({item("Pump.ocl")}), 1);
    EXPECT_EQ(recFetch({item("Pump.ocl")}), 1);
    host.worker.commands.clear();
    host.setTool("None");
    EXPECT_EQ(fetch({item("Pump.ocl")}), 0);
    EXPECT_EQ(recFetch({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 2);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(FetchFromArchive, WithoutAToolGivesOneDiagnosticEach) {
    host.setTool("none");
    EXPECT_EQ(fetch({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(recFetch({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 2);
    EXPECT_THAT(calls(), IsEmpty());
}

} // namespace
