#include "orchard/storage/ParallelReading.h"

#include "orchard/storage/UnitSearch.h"
#include "tests/orchard/storage/Workbench.h"

#include <algorithm>

using testing::HasSubstr;

namespace {

class ParallelReading : public Workbench {
  protected:
    using Units = std::vector<std::unique_ptr<orchard::Element>>;

    /// One file listed many times, each time as another unit. The units have to outlive the reading.
    static std::vector<orchard::ListedUnit> listMany(Units &units, orchard::Model &model, int count,
                                                     const char *file) {
        std::vector<orchard::ListedUnit> listed;
        for (int number = 0; number < count; ++number) {
            orchard::UnitElement &made =
                *units.emplace_back(orchard::makeElement(orchard::Kind::classKind))->asUnit();
            made.setModel(&model);
            made.setFileName(file);
            listed.push_back({&made, true, {}});
        }
        return listed;
    }
    /// Opens a generated project in which some files of classes are broken; returns these files in model order.
    std::vector<std::string> openBroken(std::size_t units, std::size_t everyNth) {
        EXPECT_TRUE(orchard::createGeneratedProject(path("Pump"), units));
        open();
        std::vector<std::string> broken;
        for (const orchard::UnitRow &row : orchard::workspaceUnits(*project)) {
            if (row.type == "Class" && row.name.ends_with(std::to_string(everyNth))) {
                broken.push_back(row.unit->getFullFileName().str());
            }
        }
        for (const std::string &file : broken) {
            write(file, "<class");
        }
        reopen();
        return broken;
    }
};

TEST_F(ParallelReading, GivesEachUnitWhatCameOfItsOwnFile) {
    openSample();
    Units units;
    std::vector<orchard::ListedUnit> listed = listMany(units, *model, 1000, "Valve.ocl");
    for (std::size_t number = 0; number < listed.size(); ++number) {
        listed[number].unit->setOwner(&model->project());
        listed[number].unit->setFileName(number % 3 == 0 ? "Missing.ocl" : "Valve.ocl");
        listed[number].isWanted = number % 7 != 0;
    }
    orchard::readFiles(*model, listed);
    for (std::size_t number = 0; number < listed.size(); ++number) {
        const auto expected = number % 7 == 0   ? orchard::UnitReading::unread
                              : number % 3 == 0 ? orchard::UnitReading::missing
                                                : orchard::UnitReading::filled;
        ASSERT_EQ(listed[number].unit, units[number].get());
        ASSERT_EQ(listed[number].reading.outcome, expected)
            << number << ' ' << listed[number].reading.problem.message();
        ASSERT_EQ(listed[number].unit->name(), expected == orchard::UnitReading::filled ? "Valve" : "");
    }
}

TEST_F(ParallelReading, OfNothingReadsNothing) {
    openSample();
    EXPECT_NO_THROW(orchard::readFiles(*model, {}));
}

TEST_F(ParallelReading, BrokenFilesAreReportedInTheOrderOfTheModelHoweverManyAreRead) {
    std::vector<std::string> broken = openBroken(2000, 3);
    ASSERT_NE(project, nullptr);
    ASSERT_GT(broken.size(), 50U);
    ASSERT_EQ(warnings.size(), broken.size());
    const std::vector<std::string> first = warnings;
    warnings.clear();
    reopen();
    EXPECT_EQ(warnings, first);
    std::ranges::sort(warnings);
    std::ranges::sort(broken);
    for (std::size_t at = 0; at < broken.size(); ++at) {
        EXPECT_THAT(warnings[at], HasSubstr(broken[at]));
    }
}

TEST_F(ParallelReading, WhatIsReadOnSeveralThreadsIsWhatIsWritten) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("Pump"), 1000));
    open();
    ASSERT_NE(project, nullptr);
    std::vector<std::pair<std::string, std::string>> texts;
    for (const orchard::UnitRow &row : orchard::workspaceUnits(*project)) {
        const std::string file = row.unit->getFullFileName().str();
        texts.emplace_back(file, read(file));
    }
    ASSERT_EQ(texts.size(), 1001U);
    EXPECT_TRUE(orchard::saveProject(project, true).empty());
    for (const auto &[file, text] : texts) {
        ASSERT_EQ(read(file), text) << file;
    }
}

TEST_F(ParallelReading, PropertiesComeAndGoOnEveryThread) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("Pump"), 1500));
    open();
    std::size_t broken = 0;
    for (const orchard::UnitRow &row : orchard::workspaceUnits(*project)) {
        if (row.type != "Class") {
            continue;
        }
        std::string inside;
        for (int number = 0; number < 12; ++number) {
            inside += "<property subject=\"CM\" metaclass=\"General\" name=\"Key" + std::to_string(number) +
                      "\" type=\"String\">" + row.name + "</property>";
        }
        const bool breaks = broken++ % 2 == 0;
        edit(row.unit->getFullFileName().str(), "</class>", inside + (breaks ? "<foo/>" : "") + "</class>");
    }
    reopen();
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(warnings.size(), (broken + 1) / 2);
    for (const orchard::UnitRow &row : orchard::workspaceUnits(*project)) {
        if (row.type == "Class" && row.state != orchard::UnitState::unloaded) {
            const IProperty *const property =
                row.unit->findProperty("CM", "General", "Key11", 0, 1, 0, 0, 1, 0, 0);
            ASSERT_NE(property, nullptr);
            ASSERT_EQ(property->getValue(), row.name);
        }
    }
}

/// A storage that fails as if out of memory.
class FailingStorage final : public orchard::UnitStorage {
  public:
    bool save(orchard::UnitElement &, const std::string &, std::string &) override { return false; }
    bool readHeader(const orchard::UnitElement &, std::string &, bool) override { throw std::bad_alloc(); }
};

TEST_F(ParallelReading, WhatAReadingThrowsComesToTheCaller) {
    write(path("units/With.ocl"),
          "<class format=\"1\" id=\"0f3c0000-0000-0000-0000-000000000001\"><name>With</name>"
          "<embedded id=\"0f3c0000-0000-0000-0000-000000000002\" file=\"a.txt\"/></class>");
    orchard::Model failing(path("x.orp"), path("units"), std::make_unique<FailingStorage>());
    Units units;
    std::vector<orchard::ListedUnit> listed = listMany(units, failing, 500, "With.ocl");
    EXPECT_THROW(orchard::readFiles(failing, listed), std::bad_alloc);
}

} // namespace
