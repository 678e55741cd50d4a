// A directory of its own for each test, with projects in it, and a user who hears messages.
#pragma once

#include "CM/host/IHandle.h"
#include "CM/host/IProject.h"
#include "orchard/messages/UserInterface.h"
#include "orchard/model/ModelView.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/NewProject.h"
#include "orchard/storage/Projects.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

class Workbench : public testing::Test, public orchard::UserInterface {
  public:
    void show(const orchard::Message &message) override { messages.push_back(message.text.str()); }
    std::optional<orchard::Reply> ask(const orchard::Question &) override { return std::nullopt; }

  protected:
    Workbench() {
        std::string name = testing::TempDir() + "orchard-XXXXXX";
        directory = ::mkdtemp(name.data());
        orchard::setUserInterface(this);
    }
    ~Workbench() override {
        orchard::closeAllProjects();
        orchard::setUserInterface(nullptr);
        std::filesystem::permissions(directory, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(directory);
    }

    [[nodiscard]] std::string path(std::string_view name) const { return directory + "/" + std::string(name); }
    /// The file of a unit of the sample, by its place in the units directory.
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
    /// The only problem of the last opening.
    [[nodiscard]] std::string problem() const {
        EXPECT_EQ(result.project, nullptr);
        EXPECT_EQ(result.problems.size(), 1U);
        return result.problems.empty() ? std::string() : result.problems.front().message();
    }

    std::string directory;
    std::vector<std::string> messages;
    std::vector<std::string> warnings;
    orchard::OpenResult result;
    IProject *project = nullptr;
    orchard::Model *model = nullptr;
};
