// What the tests of the library's core start from: a project on the recording host whose directories exist on the
// disk, with a tool chosen on the command route, and the stream of the main outputer caught.
#pragma once

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <stdlib.h>
#include <string>

/// A directory of its own for one test, removed with all that is in it.
class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "orc-core-XXXXXX").string();
        path_ = std::filesystem::canonical(::mkdtemp(name.data()));
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::string &name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

class CoreFixture : public testing::Test {
  protected:
    CoreFixture() {
        CMProperty::ResetIfActiveProjectChanged(); // while no project is open: forgets the one of the last test
        project_ = &host.addProject("Plant", scratch.path().string());
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

    ScratchDirectory scratch;
    RecordingHost host;
    std::ostringstream shown; ///< what went to the main outputer's stream

  private:
    std::filesystem::path home_ = std::filesystem::current_path();
    recording::Project *project_ = nullptr;
};
