// Tests the parsing of single records of a listing.
#include "CM/CMSupport/command/ListingParser.h"

#include "tests/CM/CMSupport/command/ListingFixture.h"

namespace {

class Record : public ListingFixture {
  protected:
    Record() { rules = {.projectFile = "Plant.ory", .projectSuffix = ".ory"}; }
    /// The item that a record yields, "-" if it yields none.
    std::string item(std::string_view record) {
        command::ListingParser parser(rules);
        const auto made = parser.parse(record);
        result = parser.result();
        return made == nullptr ? "-" : textOf(*made);
    }
    command::ListingRules rules;
    int result = -1;
};

TEST_F(Record, GivesPathVersionModeAndLocker) {
    EXPECT_EQ(item("file: sub/Pump.ocl rev: 1.4 mode: rw locker: ann"), "sub/Pump.ocl|1.4|2|ann|");
    EXPECT_EQ(result, 1);
}

TEST_F(Record, WithAWorkingFileAloneIsAReadOnlyItem) {
    EXPECT_EQ(item("file: Pump.ocl"), "Pump.ocl||1||");
    EXPECT_EQ(result, 0) << "what the last extraction returned";
}

TEST_F(Record, WithoutAWorkingFileIsPassedOver) {
    EXPECT_EQ(item("rev: 1.4 mode: rw locker: ann"), "-");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(item(""), "-");
}

TEST_F(Record, IsMatchedWithoutRegardToCase) {
    EXPECT_EQ(item("FILE: Pump.ocl REV: 2 MODE: RW LOCKER: Ann"), "Pump.ocl|2|2|Ann|");
}

TEST_F(Record, APatternThatMatchesTheEmptyTextGivesAnEmptyField) {
    EXPECT_EQ(item("file: Pump.ocl rev: locker: "), "Pump.ocl||1||");
    EXPECT_EQ(result, 1) << "the locker's pattern matched";
}

TEST_F(Record, WithoutAPatternForTheWorkingFileIsPassedOver) {
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "");
    EXPECT_EQ(item("file: Pump.ocl"), "-");
    EXPECT_EQ(result, 1) << "an empty pattern returns 1";
}

TEST_F(Record, AnEmptyPatternGivesAnEmptyField) {
    setToolProperty(IPN::CMListArchiveItsVersion, "");
    setToolProperty(IPN::CMListArchiveItsLocker, "");
    EXPECT_EQ(item("file: Pump.ocl rev: 1.4 locker: ann"), "Pump.ocl||1||");
    EXPECT_EQ(result, 1);
}

TEST_F(Record, AnEmptyModePatternGivesTheUnknownMode) {
    setToolProperty(IPN::CMListArchiveItsMode, "");
    EXPECT_EQ(item("file: Pump.ocl mode: rw"), "Pump.ocl||0||");
}

TEST_F(Record, WhatTheModePatternCapturesIsNotLookedAt) {
    setToolProperty(IPN::CMListArchiveItsMode, "mode: (r[ow])");
    EXPECT_EQ(item("file: Pump.ocl mode: ro"), "Pump.ocl||2||");
}

TEST_F(Record, APatternWithoutAGroupGivesAnEmptyField) {
    setToolProperty(IPN::CMListArchiveItsVersion, "rev: [0-9.]+");
    EXPECT_EQ(item("file: Pump.ocl rev: 1.4"), "Pump.ocl||1||");
}

TEST_F(Record, AWorkingFilePatternWithoutAGroupGivesAnItemWithoutAName) {
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: ");
    rules.wantsADot = false;
    EXPECT_EQ(item("file: Pump.ocl"), "||1||");
}

TEST_F(Record, ABrokenPatternMatchesNothing) {
    setToolProperty(IPN::CMListArchiveItsVersion, "rev: (");
    EXPECT_EQ(item("file: Pump.ocl rev: 1.4 mode: rw"), "Pump.ocl||2||");
}

TEST_F(Record, OnePatternForModeAndLockerGivesBoth) {
    setToolProperty(IPN::CMListArchiveItsMode, "locker: (\\w+)");
    setToolProperty(IPN::CMListArchiveItsLocker, "locker: (\\w+)");
    EXPECT_EQ(item("file: Pump.ocl locker: ann"), "Pump.ocl||2|ann|");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(item("file: Pump.ocl locker: "), "Pump.ocl||1||") << "nobody holds a lock";
    EXPECT_EQ(result, 0);
}

TEST_F(Record, OneEmptyPatternForModeAndLockerGivesTheUnknownModeAndNoLocker) {
    setToolProperty(IPN::CMListArchiveItsMode, "");
    setToolProperty(IPN::CMListArchiveItsLocker, "");
    EXPECT_EQ(item("file: Pump.ocl locker: ann"), "Pump.ocl||0||");
    EXPECT_EQ(result, 1);
}

TEST_F(Record, AnEmptyModePatternTakesNothingFromTheLocker) {
    setToolProperty(IPN::CMListArchiveItsMode, "");
    setToolProperty(IPN::CMListArchiveItsLocker, "locker: (\\w+)");
    EXPECT_EQ(item("file: Pump.ocl locker: ann"), "Pump.ocl||0|ann|");
}

TEST_F(Record, ThePathIsKeptAsTheToolPrintedIt) {
    EXPECT_EQ(item("file:   sub\\x/Pump.ocl  rev: 1"), "  sub\\x/Pump.ocl |1|1||");
}

class MissingPattern : public Record {
  protected:
    /// A tool with only these patterns.
    void keepOnly(std::initializer_list<std::pair<CString, CString>> patterns) {
        host.setTool("Bare");
        for (const auto &[key, pattern] : patterns) {
            host.setToolDefault("Bare", key, pattern);
        }
    }
};

TEST_F(MissingPattern, OfTheWorkingFilePassesEveryRecordOver) {
    keepOnly({});
    EXPECT_EQ(item("file: Pump.ocl"), "-");
    EXPECT_EQ(result, 0);
}

TEST_F(MissingPattern, OfTheOthersGivesEmptyFieldsAndTheUnknownMode) {
    keepOnly({{IPN::CMListArchiveItsWorkingFile, "file: (\\S+)"}});
    EXPECT_EQ(item("file: Pump.ocl rev: 1 mode: rw locker: ann"), "Pump.ocl||0||");
    EXPECT_EQ(result, 0);
}

TEST_F(MissingPattern, OfTheModeIsNotTheSameAsAnEmptyOneOfTheLocker) {
    keepOnly({{IPN::CMListArchiveItsWorkingFile, "file: (\\S+)"}, {IPN::CMListArchiveItsLocker, ""}});
    EXPECT_EQ(item("file: Pump.ocl"), "Pump.ocl||0||");
    EXPECT_EQ(result, 1) << "that of the empty pattern";
}

class ProjectFilter : public Record {};

TEST_F(ProjectFilter, DropsTheProjectFilesOfOtherProjects) {
    EXPECT_EQ(item("file: Mill.ory"), "-");
    EXPECT_EQ(item("file: sub/Mill.ory"), "-");
    EXPECT_EQ(item("file: Plant.ory"), "Plant.ory||1||");
    EXPECT_EQ(item("file: any/where/Plant.ory"), "any/where/Plant.ory||1||");
    EXPECT_EQ(item("file: /Plant.ory"), "/Plant.ory||1||");
    EXPECT_EQ(item("file: \\Plant.ory"), "\\Plant.ory||1||");
}

TEST_F(ProjectFilter, KeepsTheReturnOfTheWorkingFileForADroppedRecord) {
    item("file: Mill.ory rev: 1");
    EXPECT_EQ(result, 1);
}

TEST_F(ProjectFilter, LooksForTheSuffixAnywhereInThePath) {
    EXPECT_EQ(item("file: old.ory/Pump.ocl"), "-");
    EXPECT_EQ(item("file: old.oryx/Pump.ocl"), "-");
    EXPECT_EQ(item("file: old.ory/Plant.ory"), "old.ory/Plant.ory||1||");
    EXPECT_EQ(item("file: old.ORY/Pump.ocl"), "old.ORY/Pump.ocl||1||") << "to the letter";
}

TEST_F(ProjectFilter, ShowsAllIfAsked) {
    rules.showsAll = true;
    EXPECT_EQ(item("file: Mill.ory"), "Mill.ory||1||");
}

TEST_F(ProjectFilter, ComparesTheNameTrimmedAndToTheLetter) {
    setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: (.*)");
    EXPECT_EQ(item("file: a/ \tPlant.ory "), "a/ \tPlant.ory |"
                                             "|1||");
    EXPECT_EQ(item("file: a/plant.ory"), "-");
}

TEST_F(ProjectFilter, CutsAtABackslashEvenIfASlashStandsFurtherRight) {
    EXPECT_EQ(item("file: a\\b/Plant.ory"), "-") << "what is compared is b/Plant.ory";
    EXPECT_EQ(item("file: a/b\\Plant.ory"), "a/b\\Plant.ory||1||");
}

class DotFilter : public Record {};

TEST_F(DotFilter, DropsNamesWithoutADot) {
    EXPECT_EQ(item("file: makefile rev: 1"), "-");
    EXPECT_EQ(item("file: sub.d/makefile"), "-");
    EXPECT_EQ(item("file: sub.d\\makefile"), "-");
    EXPECT_EQ(item("file: sub\\a.b/makefile"), "-") << "cut at whichever separator is the last";
    EXPECT_EQ(item("file: sub/.hidden"), "sub/.hidden||1||");
}

TEST_F(DotFilter, RunsAllExtractionsBeforeItDrops) {
    item("file: makefile rev: 1 locker: ann");
    EXPECT_EQ(result, 1) << "that of the locker";
    item("file: makefile rev: 1");
    EXPECT_EQ(result, 0);
}

TEST_F(DotFilter, KeepsAllIfAsked) {
    rules.wantsADot = false;
    EXPECT_EQ(item("file: makefile"), "makefile||1||");
}

class HostileRecord : public Record {};

TEST_F(HostileRecord, HoldsNulBytes) {
    using namespace std::string_literals;
    EXPECT_EQ(item("file: a\0b.ocl rev: 1.4\0 locker: ann"s), "a\0b.ocl|1.4|1|ann|"s);
}

TEST_F(HostileRecord, HoldsBytesThatAreNoUtf8) {
    EXPECT_EQ(item("file: \xff\xc3.ocl rev: 1"), "\xff\xc3.ocl|1|1||");
}

TEST_F(HostileRecord, IsOfManyMegabytes) {
    const std::string padding(8'000'000, 'x');
    EXPECT_EQ(item(padding + "file: Pump.ocl rev: 1.4 locker: ann" + padding),
              "Pump.ocl|1.4|1|ann" + padding + "|");
}

class TracedRecord : public Record {
  protected:
    TracedRecord() { traceOn(); }
    std::string trace(std::string_view record) {
        shown.str({});
        command::ListingParser parser(rules);
        parser.parse(record);
        return shown.str();
    }
};

TEST_F(TracedRecord, TellsEachField) {
    EXPECT_EQ(trace("file: Pump.ocl rev: 1.4 mode: rw locker: ann"), "+++ Archive working file: 'Pump.ocl'\n"
                                                                     "+++ Archive version: '1.4'\n"
                                                                     "+++ Archive file mode: ReadWrite\n"
                                                                     "+++ Archive Locker: 'ann'\n");
}

TEST_F(TracedRecord, TellsWhatDidNotMatch) {
    EXPECT_EQ(trace("file: Pump.ocl"), "+++ Archive working file: 'Pump.ocl'\n"
                                       "+++ Failed to match 'rev: ([0-9.]*)' in 'file: Pump.ocl'\n"
                                       "+++ Archive version: ''\n"
                                       "+++ Failed to match 'mode: rw' in 'file: Pump.ocl'\n"
                                       "+++ Archive file mode: ReadOnly\n"
                                       "+++ Failed to match 'locker: (\\w*)' in 'file: Pump.ocl'\n"
                                       "+++ Archive Locker: ''\n");
}

TEST_F(TracedRecord, OfADroppedProjectFileEndsWithTheWorkingFile) {
    EXPECT_EQ(trace("file: Mill.ory rev: 1"), "+++ Archive working file: 'Mill.ory'\n");
}

TEST_F(TracedRecord, OfAnEmptyModePatternSaysReadWriteWhileTheModeIsUnknown) {
    setToolProperty(IPN::CMListArchiveItsMode, "");
    EXPECT_THAT(trace("file: Pump.ocl"), testing::HasSubstr("+++ The property 'ListArchiveItsModeis empty'\n"
                                                            "+++ Archive file mode: ReadWrite\n"));
}

TEST_F(TracedRecord, LooksUpAMissingPatternForEachRecord) {
    host.setTool("Bare");
    host.setToolDefault("Bare", IPN::CMListArchiveItsWorkingFile, "file: (\\S+)");
    shown.str({});
    command::ListingParser parser(rules);
    parser.parse("file: Pump.ocl");
    const std::string first = shown.str();
    EXPECT_EQ(first, "+++ Archive working file: 'Pump.ocl'\n"
                     "+++ could not find the property 'ListArchiveItsVersion' for Bare\n"
                     "+++ Archive version: ''\n"
                     "+++ could not find the property 'ListArchiveItsMode' for Bare\n"
                     "+++ Archive file mode: ReadOnly\n"
                     "+++ could not find the property 'ListArchiveItsLocker' for Bare\n"
                     "+++ Archive Locker: ''\n");
    shown.str({});
    parser.parse("file: Pump.ocl");
    EXPECT_EQ(shown.str(), first);
}

TEST_F(TracedRecord, LooksUpAPatternOnceForEachExtractionAndNotBefore) {
    const auto lookUps = [this](const CString &key) {
        return std::ranges::count(host.lookups, key,
                                  [](const recording::Lookup &lookup) { return lookup.property.key; });
    };
    host.lookups.clear();
    command::ListingParser parser(rules);
    EXPECT_TRUE(host.lookups.empty());
    parser.parse("file: Pump.ocl");
    parser.parse("no file");
    EXPECT_EQ(lookUps(IPN::CMListArchiveItsWorkingFile), 2);
    EXPECT_EQ(lookUps(IPN::CMListArchiveItsLocker), 1);
}

TEST_F(TracedRecord, AnEmptyListingLooksNoPatternUp) {
    host.setTool("Bare");
    host.setToolDefault("Bare", IPN::CMMultiRecordDelimiter, "\n");
    shown.str({});
    CMArchiveItemListWrapper items;
    EXPECT_EQ(command::parseListing("", rules, items.list()), 1);
    EXPECT_EQ(shown.str(), "");
}

TEST_F(Record, IsNotTracedWhileTheTraceIsOff) {
    command::ListingParser parser(rules);
    host.places.settingsRead.clear();
    host.lookups.clear();
    parser.parse("file: Pump.ocl rev: 1.4 mode: rw locker: ann");
    EXPECT_EQ(shown.str(), "");
    EXPECT_TRUE(host.places.settingsRead.empty()) << "the switch is read once for a listing";
    EXPECT_TRUE(host.lookups.empty()) << "and so are the patterns";
}

} // namespace
