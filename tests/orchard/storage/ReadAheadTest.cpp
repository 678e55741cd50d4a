#include "orchard/storage/ReadAhead.h"

#include "tests/orchard/storage/Workbench.h"

#include <algorithm>

using testing::HasSubstr;

namespace {

class ReadAhead : public Workbench {
  protected:
    /// Opens a generated project with some files of classes broken; the files, in model order.
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

TEST_F(ReadAhead, HandsOverInTheOrderOfAsking) {
    openSample();
    orchard::ReadAhead ahead(*model);
    EXPECT_EQ(ahead.next().unit, nullptr);
    std::vector<std::unique_ptr<orchard::Element>> units;
    for (int number = 0; number < 1000; ++number) {
        units.push_back(orchard::makeElement(orchard::Kind::classKind));
        orchard::UnitElement &made = *units.back()->asUnit();
        made.setModel(model);
        made.setOwner(&model->project());
        made.setFileName(number % 3 == 0 ? "Missing.ocl" : "Valve.ocl");
        ahead.ask(made, number % 7 != 0);
    }
    EXPECT_EQ(ahead.asked(), 1000U);
    for (int number = 0; number < 1000; ++number) {
        const orchard::ReadAhead::Handed handed = ahead.next();
        ASSERT_EQ(handed.unit, units[static_cast<std::size_t>(number)].get());
        const auto expected = number % 7 == 0   ? orchard::UnitReading::unread
                              : number % 3 == 0 ? orchard::UnitReading::missing
                                                : orchard::UnitReading::filled;
        ASSERT_EQ(handed.reading.outcome, expected) << number << ' ' << handed.reading.problem.message();
    }
    EXPECT_EQ(ahead.next().unit, nullptr);
}

TEST_F(ReadAhead, WhatIsNotHandedOverIsGivenUp) {
    openSample();
    std::vector<std::unique_ptr<orchard::Element>> units;
    orchard::ReadAhead ahead(*model);
    for (int number = 0; number < 200; ++number) {
        units.push_back(orchard::makeElement(orchard::Kind::classKind));
        units.back()->asUnit()->setModel(model);
        units.back()->asUnit()->setFileName("Missing.ocl");
        ahead.ask(*units.back()->asUnit(), true);
    }
    EXPECT_EQ(ahead.next().unit, units.front().get()); // and the rest is in the making
}

TEST_F(ReadAhead, BrokenFilesAreToldInTheOrderOfTheModelHoweverManyAreRead) {
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

TEST_F(ReadAhead, WhatIsReadOnSeveralThreadsIsWhatIsWritten) {
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

} // namespace
