// Sets up the tests of the library's core: a project on the recording host whose directories exist on disk, a tool
// chosen on the command route, and the stream of the main outputer captured.
#pragma once

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

class CoreFixture : public testing::Test {
    const support::TemporaryDirectory temporary_;

  protected:
    CoreFixture() {
        CMProperty::ResetIfActiveProjectChanged(); // while no project is open: forgets the one of the last test
        project_ = &host.addProject("Plant", scratch.string());
        std::filesystem::create_directories(unitsDirectory());
        host.addConfiguration("Release", host.addComponent("Main"));
        host.setProperty(nullptr, IPN::CM, IPN::General, "UseSCCtool", "No");
        host.setTool("RCS");
        getMainCMOutputer()() = &shown;
    }
    ~CoreFixture() override {
        getMainCMOutputer()() = nullptr;
        std::filesystem::current_path(home_);
    }

    [[nodiscard]] recording::Project &project() { return *project_; }
    [[nodiscard]] std::filesystem::path unitsDirectory() const { return scratch / "_Plant"; }
    void setGeneral(const CString &key, const CString &value) {
        host.setProperty(nullptr, IPN::CM, IPN::General, key, value);
    }
    void setToolProperty(const CString &key, const CString &value) { host.setToolDefault("RCS", key, value); }
    void setOldLayout() { setToolProperty("SupportTreeRepository", "Yes"); }
    void setProviderRoute() { setGeneral("UseSCCtool", "Yes"); }
    void traceOn() { host.setSetting("DEBUG_CM", "TRUE"); }

    static void write(const std::filesystem::path &path, const std::string &text) { std::ofstream(path) << text; }
    static std::string read(const std::filesystem::path &path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::filesystem::path scratch = temporary_.path(); ///< a separate directory for each test
    RecordingHost host;
    std::ostringstream shown; ///< what was written to the main outputer's stream

  private:
    std::filesystem::path home_ = std::filesystem::current_path();
    recording::Project *project_ = nullptr;
};
