#include "orchard/remembered/RememberedWorkspace.h"

#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IProject.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/remembered/WorkspaceRecord.h"
#include "orchard/storage/UnitSearch.h"
#include "tests/orchard/storage/Workbench.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using testing::Contains;
using testing::Not;
using testing::SizeIs;

namespace {

class RememberedWorkspace : public Workbench {
  protected:
    using Rows = std::vector<std::string>;

    RememberedWorkspace() { ::setenv("XDG_CACHE_HOME", path("cache").c_str(), 1); }
    ~RememberedWorkspace() override { ::unsetenv("XDG_CACHE_HOME"); }

    static std::string textOf(const orchard::UnitRow &row) {
        return row.name + "|" + row.path + "|" + row.type + "|" + row.file + "|" +
               orchard::unitStateText(row.state) + "|" + row.unit->getCMHeader().str();
    }
    [[nodiscard]] Rows listed() const {
        Rows rows;
        for (const orchard::UnitRow &row : orchard::workspaceUnits(*project)) {
            rows.push_back(textOf(row));
        }
        return rows;
    }
    /// Makes the files look an hour old when the project is opened.
    void keep() const {
        orchard::RememberedWorkspace::keep(*project, std::chrono::system_clock::now() + std::chrono::hours(1));
    }
    /// Lists the sample and remembers the result.
    Rows keepSample() {
        openSample();
        keep();
        return listed();
    }
    /// Returns what is remembered now; no rows if nothing is.
    [[nodiscard]] Rows remembered() const {
        orchard::closeAllProjects();
        Rows rows;
        if (const auto kept = orchard::RememberedWorkspace::open(path("Pump.orp"))) {
            kept->visitUnits([&](const orchard::UnitRow &row) { rows.push_back(textOf(row)); });
        }
        EXPECT_TRUE(orchard::openProjects().empty());
        return rows;
    }
    [[nodiscard]] fs::path record() const {
        const fs::path place = path("cache/orchard/workspaces");
        return fs::exists(place) ? fs::directory_iterator(place)->path() : fs::path();
    }
    void setTimes(const std::string &file, const struct stat &state) const {
        const struct timespec times[] = {state.st_atim, state.st_mtim};
        ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    }
};

TEST_F(RememberedWorkspace, ListsWhatTheWholeModelLists) {
    const Rows rows = keepSample();
    EXPECT_THAT(rows, SizeIs(17));
    EXPECT_EQ(remembered(), rows);
}

TEST_F(RememberedWorkspace, ReadsNoFilesOfUnitsThatPropertiesDontNeed) {
    openSample();
    keep();
    orchard::closeAllProjects();
    const auto kept = orchard::RememberedWorkspace::open(path("Pump.orp"));
    ASSERT_NE(kept, nullptr);
    ASSERT_EQ(orchard::openProjects().size(), 1U);
    project = orchard::openProjects().front();
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), project);
    EXPECT_FALSE(orchard::findUnit(*project, "Valve"));
    EXPECT_TRUE(unit("Drives")->isStub());
    EXPECT_FALSE(project->getComponent()->isStub());
}

TEST_F(RememberedWorkspace, PropertiesAreFoundAsInTheWholeModel) {
    openSample();
    orchard::Element &configuration = *orchard::Element::of(project->getConfiguration());
    configuration.makeProperties().set("CM", "General", "Own", "String", "of the configuration");
    orchard::Element::of(project)->makeProperties().set("CM", "General", "Outer", "String", "of the project");
    ASSERT_TRUE(orchard::saveProject(project, true).empty());
    reopen();
    keep();
    orchard::closeAllProjects();
    const auto kept = orchard::RememberedWorkspace::open(path("Pump.orp"));
    ASSERT_NE(kept, nullptr);
    const IDObject *const referee = CurrentWorkspace::GetActiveProject()->getConfiguration();
    ASSERT_NE(referee, nullptr);
    for (const auto &[key, value] :
         {std::pair("Own", "of the configuration"), std::pair("Outer", "of the project")}) {
        const IProperty *const property = referee->findProperty("CM", "General", key, 0, 1, 0, 0, 1, 0, 0);
        ASSERT_NE(property, nullptr) << key;
        EXPECT_EQ(property->getValue(), value);
    }
}

TEST_F(RememberedWorkspace, AChangeOfAnyFileEndsIt) {
    keepSample();
    std::vector<std::string> files{path("Pump.orp")};
    for (const auto &entry : fs::recursive_directory_iterator(path("Pump_ory"))) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path().string());
        }
    }
    ASSERT_THAT(files, SizeIs(18));
    for (const std::string &file : files) {
        ASSERT_THAT(remembered(), SizeIs(17)) << file;
        struct stat before {};
        ASSERT_EQ(::stat(file.c_str(), &before), 0);
        write(file, read(file));
        setTimes(file, before); // which hides nothing
        EXPECT_THAT(remembered(), SizeIs(0)) << file;
        open();
        keep();
    }
}

TEST_F(RememberedWorkspace, AFilePutInThePlaceOfAnotherEndsIt) {
    keepSample();
    const std::string file = unitFile("Valve.ocl");
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    write(file + "x", read(file));
    setTimes(file + "x", before);
    fs::rename(file + "x", file);
    EXPECT_THAT(remembered(), SizeIs(0));
}

TEST_F(RememberedWorkspace, AModeThatIsSetEndsIt) {
    keepSample();
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    EXPECT_THAT(remembered(), SizeIs(0));
    open();
    keep();
    EXPECT_THAT(remembered(), Contains(testing::HasSubstr("Valve.ocl|RO|")));
}

TEST_F(RememberedWorkspace, AFileThatGoesEndsIt) {
    keepSample();
    fs::remove(unitFile("Valve.ocl"));
    EXPECT_THAT(remembered(), SizeIs(0));
}

TEST_F(RememberedWorkspace, AHeaderIsTheOneOfTheFile) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    edit(unitFile("Valve.ocl"), "<class", "<!--\nmine 1.7\n--><class");
    open();
    keep();
    EXPECT_THAT(remembered(), Contains(testing::HasSubstr("Valve.ocl|RW|mine 1.7")));
}

TEST_F(RememberedWorkspace, NothingIsKeptWhileFilesAreYoungerThanTheirTimesTell) {
    openSample();
    orchard::RememberedWorkspace::keep(*project, std::chrono::system_clock::now());
    EXPECT_EQ(record(), fs::path());
    orchard::RememberedWorkspace::keep(*project, std::chrono::system_clock::now() + std::chrono::seconds(3));
    EXPECT_NE(record(), fs::path());
}

TEST_F(RememberedWorkspace, NothingIsKeptOfAModelWithAMissingFile) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    fs::remove(unitFile("Valve.ocl"));
    open();
    keep();
    EXPECT_EQ(record(), fs::path());
}

TEST_F(RememberedWorkspace, NothingIsKeptOfAModelWithABrokenFile) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    write(unitFile("Valve.ocl"), "<class");
    open();
    keep();
    EXPECT_EQ(record(), fs::path());
}

TEST_F(RememberedWorkspace, NothingIsKeptOfAModelWithAMissingEmbeddedFile) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    bool removed = false;
    for (const auto &entry : fs::recursive_directory_iterator(path("Pump_ory"))) {
        if (!removed && entry.is_regular_file() && !entry.path().extension().string().starts_with(".o")) {
            removed = fs::remove(entry.path());
            break;
        }
    }
    ASSERT_TRUE(removed);
    open();
    keep();
    EXPECT_EQ(record(), fs::path());
}

TEST_F(RememberedWorkspace, NothingIsKeptOfAModelWithUnsavedChanges) {
    openSample();
    orchard::setDescription(*unit("Valve"), "changed");
    keep();
    EXPECT_EQ(record(), fs::path());
}

TEST_F(RememberedWorkspace, UnitsThatAreNotToBeLoadedAreKeptAsSuch) {
    openSample();
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Drives"), false).empty());
    ASSERT_TRUE(orchard::saveProject(project).empty());
    reopen();
    keep();
    const Rows rows = listed();
    EXPECT_EQ(remembered(), rows);
    EXPECT_THAT(rows, Contains(testing::HasSubstr("Drives.osb|U|")));
    write(unitFile("Drives.osb"), "whatever"); // which isn't read
    EXPECT_EQ(remembered(), rows);
}

TEST_F(RememberedWorkspace, ADamagedRecordCountsAsNone) {
    const Rows rows = keepSample();
    const std::string good = read(record().string());
    for (std::size_t at = 0; at < good.size(); at += 7) {
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ 1);
        ASSERT_FALSE(orchard::WorkspaceRecord::from(std::move(bad))) << at;
        ASSERT_FALSE(orchard::WorkspaceRecord::from(good.substr(0, at))) << at;
    }
    write(record().string(), good.substr(0, good.size() / 2));
    EXPECT_THAT(remembered(), SizeIs(0));
    write(record().string(), good);
    EXPECT_EQ(remembered(), rows);
}

TEST_F(RememberedWorkspace, TheRecordOfAnotherProjectCountsAsNone) {
    keepSample();
    const fs::path first = record();
    const std::string text = read(first.string());
    fs::remove(first);
    ASSERT_TRUE(orchard::createSampleProject(path("Other")));
    open("Other.orp");
    keep();
    write(record().string(), text);
    orchard::closeAllProjects();
    EXPECT_EQ(orchard::RememberedWorkspace::open(path("Other.orp")), nullptr);
}

TEST_F(RememberedWorkspace, WithoutACacheDirectoryNothingIsKept) {
    openSample();
    write(path("cache"), "a file in its place");
    keep();
    EXPECT_THAT(remembered(), SizeIs(0));
    ::unsetenv("XDG_CACHE_HOME");
    const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
    ::unsetenv("HOME");
    open();
    keep();
    EXPECT_THAT(remembered(), SizeIs(0));
    ::setenv("HOME", home.c_str(), 1);
}

TEST_F(RememberedWorkspace, UnitsThatStandElsewhereAreWatchedToo) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    fs::create_directory(path("shared"));
    fs::rename(unitFile("Valve.ocl"), path("shared/Valve.ocl"));
    fs::create_symlink(path("shared"), path("link"));
    edit(unitFile("Drives.osb"), "file=\"Valve.ocl\"", "file=\"../link/Valve.ocl\" external=\"yes\"");
    open();
    keep();
    const Rows rows = listed();
    EXPECT_EQ(remembered(), rows);
    fs::copy(path("shared"), path("other"));
    fs::remove(path("link"));
    fs::create_symlink(path("other"), path("link"));
    EXPECT_THAT(remembered(), SizeIs(0));
}

TEST_F(RememberedWorkspace, AProjectWithoutAnActiveComponentIsKept) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    const std::string text = read(path("Pump.orp"));
    write(path("Pump.orp"), text.substr(0, text.find("component ")));
    open();
    ASSERT_EQ(project->getComponent(), nullptr);
    keep();
    const Rows rows = listed();
    EXPECT_EQ(remembered(), rows);
}

TEST_F(RememberedWorkspace, ADirectoryNamesTheOneProjectInIt) {
    const Rows rows = keepSample();
    orchard::closeAllProjects();
    EXPECT_NE(orchard::RememberedWorkspace::open(directory), nullptr);
}

TEST_F(RememberedWorkspace, CancellingEndsTheLookAtTheFiles) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("Pump"), 600));
    open();
    keep();
    orchard::closeAllProjects();
    orchard::OpenOptions options;
    std::size_t told = 0;
    options.progress = [&](std::size_t done, std::size_t known) {
        EXPECT_EQ(known, 601U);
        told = done;
    };
    EXPECT_NE(orchard::RememberedWorkspace::open(path("Pump.orp"), options), nullptr);
    EXPECT_EQ(told, 512U);
    options.cancelled = [&] { return true; };
    EXPECT_EQ(orchard::RememberedWorkspace::open(path("Pump.orp"), options), nullptr);
    EXPECT_EQ(told, 256U);
}

TEST_F(RememberedWorkspace, WhatAnotherVersionOfTheProgramHasReadCountsAsNone) {
    keepSample();
    std::string text = read(record().string());
    const std::size_t digit = text.find('\n') - 1;
    text[digit] = static_cast<char>(text[digit] + 1);
    EXPECT_FALSE(orchard::WorkspaceRecord::from(std::move(text)));
}

TEST_F(RememberedWorkspace, TheSixteenNewestRecordsStayForTheirOwner) {
    const Rows rows = keepSample();
    const fs::path place = record().parent_path();
    const auto now = fs::file_time_type::clock::now();
    for (int age = 1; age <= 20; ++age) {
        const fs::path older = place / ("older" + std::to_string(age));
        write(older.string(), "x");
        fs::last_write_time(older, now - std::chrono::hours(age));
    }
    keep();
    EXPECT_EQ(std::distance(fs::directory_iterator(place), {}), 16);
    EXPECT_TRUE(fs::exists(place / "older15"));
    EXPECT_FALSE(fs::exists(place / "older16"));
    EXPECT_EQ(remembered(), rows);
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);
}

TEST_F(RememberedWorkspace, FileSystemsThatTellNoChangesAreKnown) {
    EXPECT_TRUE(orchard::FileState::keepsChangeTimes(directory.c_str()));
    EXPECT_FALSE(orchard::FileState::keepsChangeTimes(path("missing").c_str()));
}

} // namespace
