// Provides each test with its own directory for projects, and records the messages to the user.
#pragma once

#include "CM/host/IHandle.h"
#include "CM/host/IProject.h"
#include "CM/platform/dialog/CDialog.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/model/ModelView.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/NewProject.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"
#include "tests/support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

class Workbench : public testing::Test, public platform::DialogDriver {
  public:
    bool run(CDialog &dialog) override {
        CButton *const button = dialog.onlyButton();
        if (button == nullptr) {
            return false;
        }
        messages.push_back(dialog.prompt().str());
        return button->press();
    }

  protected:
    Workbench() { orchard::setDialogDriver(this); }
    ~Workbench() override {
        orchard::closeAllProjects();
        orchard::setDialogDriver(nullptr);
    }

    [[nodiscard]] std::string path(std::string_view name) const { return directory + "/" + std::string(name); }
    /// Returns the file of a unit of the sample, by its path in the units directory.
    [[nodiscard]] std::string unitFile(std::string_view name) const {
        return path("Pump_ory/" + std::string(name));
    }
    static std::string read(const std::string &file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static void write(const std::string &file, std::string_view text) {
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }
    /// Replaces the first occurrence in a file.
    static void edit(const std::string &file, std::string_view from, std::string_view to) {
        std::string text = read(file);
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from << " in " << file << ":\n" << text;
        write(file, text.replace(at, from.size(), to));
    }

    /// Makes the sample Pump and opens it.
    void openSample() {
        ASSERT_EQ(orchard::createSampleProject(path("Pump")).error, "");
        open();
    }
    void open(std::string_view name = "Pump.orp") {
        orchard::OpenOptions options;
        options.warning = [this](const orchard::Problem &problem) { warnings.push_back(problem.message()); };
        result = orchard::openProject(path(name), options);
        project = result.project;
        if (project != nullptr) {
            model = orchard::Element::of(project)->model();
        }
    }
    void reopen() {
        orchard::closeAllProjects();
        open();
    }
    [[nodiscard]] IUnit *unit(std::string_view words) const {
        const orchard::UnitSearch search = orchard::findUnit(*project, words);
        EXPECT_EQ(search.error, "");
        return search.unit;
    }
    [[nodiscard]] static orchard::UnitElement &element(const IUnit *unit) {
        return *orchard::Element::of(unit)->asUnit();
    }
    /// Returns the only problem that the last opening reported.
    [[nodiscard]] std::string problem() const {
        EXPECT_EQ(result.project, nullptr);
        EXPECT_EQ(result.problems.size(), 1U);
        return result.problems.empty() ? std::string() : result.problems.front().message();
    }

    const support::TemporaryDirectory temporary;
    const std::string directory = temporary.path();
    std::vector<std::string> messages;
    std::vector<std::string> warnings;
    orchard::OpenResult result;
    IProject *project = nullptr;
    orchard::Model *model = nullptr;
};
