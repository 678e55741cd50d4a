#include "CM/CMSupport/command/CMListArchive.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "tests/CM/CMSupport/command/ListingFixture.h"

#include <chrono>
#include <initializer_list>
#include <memory>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ListArchive : public ListingFixture {
  protected:
    ~ListArchive() override { clear(); }
    void clear() {
        while (!items.IsEmpty()) {
            const std::unique_ptr<CMArchiveItem> owned(items.RemoveHead());
        }
    }
    int run() { return CMListArchive()(items, args, diags); }
    /// Lists an archive for which the tool prints `output`.
    int listing(const CString &output) {
        host.worker.run = [output](const CString &) { return recording::ToolRun{{output}, {}, 0}; };
        return run();
    }
    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> made;
        for (const CMArchiveItem *item : items) {
            made.push_back(textOf(*item));
        }
        return made;
    }
    CMArchiveItemList items;
};

TEST_F(ListArchive, TurnsEachRecordIntoAnItem) {
    EXPECT_EQ(listing("file: Pump.ocl rev: 1.4 mode: rw locker: ann\nfile: sub/Valve.ocl rev: 2 locker: bob"), 1);
    EXPECT_THAT(texts(), ElementsAre("Pump.ocl|1.4|2|ann|", "sub/Valve.ocl|2|1|bob|"));
    EXPECT_THAT(host.worker.commands, ElementsAre("list /archives/plant"));
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(ListArchive, LogsTheCommandAndItsOutput) {
    listing("file: Pump.ocl\n");
    EXPECT_THAT(
        logTexts(),
        ElementsAre("Executing the following command to list the files in the archive: list /archives/plant",
                    "List archive command returned the following: file: Pump.ocl\n"));
    EXPECT_EQ(host.logLines[0].source, "../CM/CMSupport/ListArchive");
    EXPECT_EQ(host.logLines[0].name, 4);
}

TEST_F(ListArchive, TheCallersArgumentsComeFirstAndStay) {
    setToolProperty(IPN::CMListArchive, "list $extra $archive");
    ExtraArgument extra;
    CMArchive other("/archives/other");
    args.AddTail(&extra);
    args.AddTail(&other);
    run();
    EXPECT_THAT(host.worker.commands, ElementsAre("list x /archives/other"));
    EXPECT_EQ(args.GetCount(), 2);
    args.RemoveAll();
}

TEST_F(ListArchive, OfAnEmptyOutputHasNoItems) {
    EXPECT_EQ(listing(""), 1);
    EXPECT_THAT(texts(), IsEmpty());
    host.worker.run = {};
    EXPECT_EQ(run(), 1);
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(ListArchive, AppendsToWhatTheListHolds) {
    listing("file: Pump.ocl");
    listing("file: Pump.ocl rev: 2\nfile: Valve.ocl");
    EXPECT_THAT(texts(), ElementsAre("Pump.ocl||1||", "Pump.ocl|2|1||", "Valve.ocl||1||"));
}

TEST_F(ListArchive, ReturnsWhatTheLastExtractionReturned) {
    EXPECT_EQ(listing("file: Pump.ocl locker: ann\nfile: Valve.ocl"), 0) << "the last file is not locked";
    EXPECT_EQ(listing("file: Pump.ocl locker: ann\n2 files\n"), 0) << "a tail without a file";
    EXPECT_EQ(listing("2 files\nfile: Pump.ocl locker: ann"), 1);
    EXPECT_THAT(texts(), SizeIs(4));
}

TEST_F(ListArchive, PassesTextAroundTheRecordsOver) {
    setToolProperty(IPN::CMMultiRecordDelimiter, "-{3,}\n");
    listing("Listing of the archive\n---\nfile: Pump.ocl\n-----\nfile: Valve.ocl\n---\nEnd\n");
    EXPECT_THAT(texts(), SizeIs(2));
}

TEST_F(ListArchive, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(ListArchive, WithAProviderStillAsksForTheTool) {
    useProvider();
    host.setTool("None");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(ListArchive, WithoutAProjectGivesNothing) {
    host.model.activeProject = nullptr;
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(ListArchive, IfTheProjectIsGoneBehindTheToolCheckGivesZeroWithoutADiagnostic) {
    ClosingConfiguration closing;
    ICodeGenConfigInfo *const before = std::exchange(project().configuration, &closing);
    EXPECT_EQ(run(), 0);
    project().configuration = before;
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(ListArchive, WithoutATemplateRunsNothing) {
    host.setTool("Bare");
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(ListArchive, WithAnEmptyTemplateLogsTwoLinesRunsNothingAndGivesOne) {
    setToolProperty(IPN::CMListArchive, "");
    EXPECT_EQ(run(), 1);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to list the files in the archive: ",
                                        "List archive command returned the following: "));
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(items.IsEmpty());
}

TEST_F(ListArchive, WithATemplateThatCannotBeResolvedRunsNothing) {
    setToolProperty(IPN::CMListArchive, "list $nothing");
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(args.IsEmpty());
}

TEST_F(ListArchive, IfTheWorkingDirectoryCannotBeEnteredNothingIsParsed) {
    breakExecute();
    EXPECT_EQ(listing("file: Pump.ocl"), 0);
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_THAT(logTexts(), SizeIs(2)) << "the second line comes all the same";
    EXPECT_LT(lookUpOf(IPN::CMMultiRecordDelimiter), 0);
}

TEST_F(ListArchive, IfTheWorkingDirectoryCannotBeLeftTheOutputIsNotParsed) {
    const auto home = scratch / "home";
    std::filesystem::create_directory(home);
    std::filesystem::current_path(home);
    host.worker.run = [&](const CString &) {
        std::filesystem::remove(home);
        return recording::ToolRun{{"file: Pump.ocl"}, {}, 0};
    };
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(ListArchive, WithoutADelimiterThrowsTheOutputAwayAndGivesOne) {
    host.setTool("Bare");
    host.setToolDefault("Bare", IPN::CMListArchive, "list");
    host.setToolDefault("Bare", IPN::CMListArchiveItsWorkingFile, "file: (\\S+)");
    EXPECT_EQ(listing("file: Pump.ocl"), 1);
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_THAT(host.worker.commands, ElementsAre("list"));
}

TEST_F(ListArchive, AnEmptyDelimiterCutsTheOutputIntoCharacters) {
    setToolProperty(IPN::CMMultiRecordDelimiter, "");
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "([a-z])");
    setGeneral("IgnoreArchiveItemsWithoutDot", "No");
    listing("a b");
    EXPECT_THAT(texts(), ElementsAre("a||1||", "b||1||"));
}

TEST_F(ListArchive, TheDelimiterIsMatchedWithRegardToCase) {
    setToolProperty(IPN::CMMultiRecordDelimiter, "next");
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: (\\S+)");
    listing("file: A.ocl NEXT file: B.ocl next file: C.ocl");
    EXPECT_THAT(texts(), ElementsAre("A.ocl||1||", "C.ocl||1||"));
}

TEST_F(ListArchive, HidesTheProjectFilesOfOthersUnlessThePropertyShowsThem) {
    const CString output = "file: Mill.ory\nfile: Plant.ory\nfile: Pump.ocl";
    listing(output);
    EXPECT_THAT(texts(), ElementsAre("Plant.ory||1||", "Pump.ocl||1||"));
    clear();
    setToolProperty("ShowAllFilesInArchive", "Yes");
    listing(output);
    EXPECT_THAT(texts(), SizeIs(3));
    clear();
    setToolProperty("ShowAllFilesInArchive", "No");
    listing(output);
    EXPECT_THAT(texts(), SizeIs(2));
}

TEST_F(ListArchive, TheSuffixIsTheProjectsOwn) {
    project().extension = ".proj";
    listing("file: Mill.proj\nfile: Mill.ory");
    EXPECT_THAT(texts(), ElementsAre("Mill.ory||1||"));
}

TEST_F(ListArchive, LeavesNamesWithoutADotOutUnlessThePropertyIsFalse) {
    const CString output = "file: makefile\nfile: Pump.ocl";
    listing(output);
    EXPECT_THAT(texts(), SizeIs(1)) << "also without the property";
    clear();
    setGeneral("IgnoreArchiveItemsWithoutDot", "No");
    listing(output);
    EXPECT_THAT(texts(), SizeIs(2));
    clear();
    setGeneral("IgnoreArchiveItemsWithoutDot", "Yes");
    listing(output);
    EXPECT_THAT(texts(), SizeIs(1));
}

TEST_F(ListArchive, ReadsTheDotFromTheProjectAndNotFromTheTool) {
    setToolProperty("IgnoreArchiveItemsWithoutDot", "No");
    listing("file: makefile");
    EXPECT_THAT(texts(), IsEmpty());
    const auto at = lookUpOf("IgnoreArchiveItemsWithoutDot");
    ASSERT_GE(at, 0);
    EXPECT_EQ(host.lookups[static_cast<std::size_t>(at)].object, &project());
    EXPECT_EQ(host.lookups[static_cast<std::size_t>(at)].property.metaclass, "General");
}

TEST_F(ListArchive, AChangeOfThePatternsTakesEffectAtTheNextListing) {
    listing("file: Pump.ocl rev: 1");
    setToolProperty(IPN::CMListArchiveItsVersion, "rev: (no)");
    listing("file: Pump.ocl rev: 1");
    EXPECT_THAT(texts(), ElementsAre("Pump.ocl|1|1||", "Pump.ocl||1||"));
}

TEST_F(ListArchive, WithAProviderReadsNothingUnderTheProvidersName) {
    for (const auto &[key, value] :
         std::initializer_list<std::pair<CString, CString>>{{IPN::CMListArchive, "list"},
                                                            {IPN::CMMultiRecordDelimiter, "\n"},
                                                            {IPN::CMListArchiveItsWorkingFile, "file: (\\S+)"},
                                                            {IPN::CMListArchiveItsVersion, "rev: (\\S+)"},
                                                            {"ShowAllFilesInArchive", "No"}}) {
        host.setToolDefault("SCC", key, value);
        host.setToolDefault("Basalt", key, "Yes");
    }
    useProvider();
    listing("file: Mill.ory\nfile: Pump.ocl rev: 1");
    EXPECT_THAT(host.worker.commands, ElementsAre("list"));
    EXPECT_THAT(texts(), ElementsAre("Pump.ocl|1|0||"));
}

TEST_F(ListArchive, AToolThatPrintsAnErrorGivesNoItems) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"file: Pump.ocl"}, {"no access\n"}, 0}; };
    EXPECT_EQ(run(), 1);
    EXPECT_THAT(texts(), IsEmpty());
}

// --- Malicious listings.

class HostileListing : public ListArchive {};

TEST_F(HostileListing, KeepsTheGoodRecordsAmongBytesOfAnyKind) {
    using namespace std::string_literals;
    listing(
        "file: A.ocl rev: 1\n\0\0\0\nfile: \xff\xfe\x80.ocl rev: 2\n\xc3\x28\nfile: C\0C.ocl rev: 3\r\nfile: D.ocl"s);
    EXPECT_THAT(texts(), ElementsAre("A.ocl|1|1||", "\xff\xfe\x80.ocl|2|1||", "C\0C.ocl|3|1||"s, "D.ocl||1||"));
}

TEST_F(HostileListing, KeepsTheGoodRecordsAroundOneOfManyMegabytes) {
    const std::string longName(10'000'000, 'x'); // NOLINT(bugprone-string-constructor): long, indeed
    listing("file: A.ocl rev: 1\nfile: " + longName + ".ocl\nfile: C.ocl rev: 3");
    ASSERT_THAT(texts(), SizeIs(3));
    EXPECT_EQ(textOf(*items.GetHead()), "A.ocl|1|1||");
    EXPECT_EQ(textOf(*items.GetTail()), "C.ocl|3|1||");
    auto position = items.GetHeadPosition();
    items.GetNext(position);
    EXPECT_EQ(items.GetAt(position)->getFileName().GetLength(), 10'000'004);
}

TEST_F(HostileListing, PassesAMillionEmptyRecordsOver) {
    listing("file: A.ocl\n" + std::string(1'000'000, '\n') + "file: B.ocl");
    EXPECT_THAT(texts(), ElementsAre("A.ocl||1||", "B.ocl||1||"));
}

TEST_F(HostileListing, KeepsTheGoodRecordsAmongThoseOnWhichAPatternBackTracksForEver) {
    setToolProperty(IPN::CMListArchiveItsVersion, "rev: (?:(a+)+|([0-9.]+))(?:$| )");
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: (\\S+)");
    std::string output;
    for (int at = 0; at < 300; ++at) {
        const std::string number = std::to_string(at);
        output += "file: Bad" + number + ".ocl rev: " + std::string(60, 'a') + "!\nfile: Good" + number +
                  ".ocl rev: aa locker: ann\n";
    }
    const auto start = std::chrono::steady_clock::now();
    listing(output);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    ASSERT_THAT(texts(), SizeIs(600));
    int at = 0;
    for (const CMArchiveItem *item : items) {
        const std::string number = std::to_string(at / 2);
        EXPECT_EQ(textOf(*item), at % 2 == 0 ? "Bad" + number + ".ocl||1||" : "Good" + number + ".ocl|aa|1|ann|");
        ++at;
    }
}

TEST_F(HostileListing, ADelimiterThatBackTracksForEverLeavesTheRestAsOneRecord) {
    setToolProperty(IPN::CMMultiRecordDelimiter, "(a+)+;");
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: (\\S+)");
    listing("file: A.ocl a;file: B.ocl " + std::string(5000, 'a') + "! file: C.ocl");
    EXPECT_THAT(texts(), ElementsAre("A.ocl||1||", "B.ocl||1||"));
}

TEST_F(HostileListing, AListingThatEndsInTheMiddleOfARecordKeepsWhatItHas) {
    listing("file: A.ocl rev: 1.2\nfile: B.o");
    EXPECT_THAT(texts(), ElementsAre("A.ocl|1.2|1||", "B.o||1||"));
}

} // namespace
