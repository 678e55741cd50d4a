// Provides tests of the daily commands with a project that is not under RCS yet, and with one that is; anna owns
// both.
#pragma once

#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tools {

/// Units in the archive, checked in as 1.1; words go to the program with --json in front.
struct DailyCycle : testing::Test {
    RcsProject project;
    std::filesystem::path pump = project.fileOf("Pump");

    Ran run(std::vector<std::string> words) {
        words.insert(words.begin(), "--json");
        return project.onProject(words);
    }
    /// Returns the result of the first item.
    static nlohmann::json first(const Ran &ran) {
        const auto json = ran.json();
        return json.is_discarded() || json["items"].empty() ? nlohmann::json() : json["items"][0];
    }
    static std::string reason(const Ran &ran) { return first(ran).value("reason", ""); }
    static std::string errorOf(const Ran &ran) {
        const auto json = ran.json();
        return json.is_discarded() || !json.contains("error") ? "" : json["error"].value("message", "");
    }

    void lock(const std::string &unit) {
        const Ran ran = run({"checkout", "--lock", unit});
        ASSERT_EQ(ran.exit, 0) << ran.out << ran.err;
    }
    void change(const std::filesystem::path &file, const std::string &from, const std::string &to) {
        const Ran ran =
            project.shell("sed -i " + quoted("s|" + from + "|" + to + "|") + " " + quoted(file.string()));
        ASSERT_EQ(ran.exit, 0) << ran.err;
    }
    /// Returns what rlog reports about a file's archive.
    std::string rlog(const std::filesystem::path &file) {
        return project.shell("rlog " + quoted(file.string())).out;
    }
    static bool isWritable(const std::filesystem::path &file) {
        return (std::filesystem::status(file).permissions() & std::filesystem::perms::owner_write) !=
               std::filesystem::perms::none;
    }
    static std::string read(const std::filesystem::path &file) { return Workplace::read(file); }
};

} // namespace tools
