// Tests which file is the registry.
#include "CM/platform/Registry.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace {

using platform::Registry;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RegistryPlaces : public testing::Test {
  protected:
    RegistryPlaces() {
        for (const char *name : {"ORCHARD_REGISTRY", "XDG_CONFIG_HOME", "HOME"}) {
            const char *value = std::getenv(name);
            kept_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
            ::unsetenv(name);
        }
    }
    ~RegistryPlaces() override {
        for (const auto &[name, value] : kept_) {
            if (value) {
                ::setenv(name.c_str(), value->c_str(), 1);
            } else {
                ::unsetenv(name.c_str());
            }
        }
    }
    std::string writeRegistry(std::string_view file, const std::string &key) const {
        return directory_.write(file, "REGEDIT4\n[" + key + "]\n@=\"here\"\n");
    }
    static bool hasKey(const Registry &registry, const char *key) { return registry.text(key, "").has_value(); }
    Registry open() {
        return Registry::open([this](const CString &line) { reports_.push_back(line.str()); });
    }

    support::TemporaryDirectory directory_;
    std::map<std::string, std::optional<std::string>> kept_;
    std::vector<std::string> reports_;
};

TEST_F(RegistryPlaces, TakesTheFileThatTheVariableNamesBeforeTheUsers) {
    ::setenv("ORCHARD_REGISTRY", writeRegistry("named.reg", "NAMED").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", directory_.path().c_str(), 1);
    writeRegistry("orchard/registry.reg", "USER");
    const auto registry = open();
    EXPECT_TRUE(hasKey(registry, "NAMED"));
    EXPECT_FALSE(hasKey(registry, "USER"));
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryPlaces, PutsNoOtherFileInThePlaceOfAMissingNamedOne) {
    const auto none = directory_ / "none.reg";
    ::setenv("ORCHARD_REGISTRY", none.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", directory_.path().c_str(), 1);
    writeRegistry("orchard/registry.reg", "USER");
    EXPECT_FALSE(hasKey(open(), "USER"));
    EXPECT_THAT(reports_, ElementsAre("the registry file " + none + " can't be read: No such file or directory"));
}

TEST_F(RegistryPlaces, TakesTheUsersConfigurationDirectory) {
    ::setenv("XDG_CONFIG_HOME", directory_.path().c_str(), 1);
    ::setenv("HOME", (directory_ / "home").c_str(), 1);
    writeRegistry("orchard/registry.reg", "XDG");
    writeRegistry("home/.config/orchard/registry.reg", "HOME");
    EXPECT_TRUE(hasKey(open(), "XDG"));
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_TRUE(hasKey(open(), "HOME"));
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_TRUE(hasKey(open(), "HOME")) << "a relative one is to be ignored";
}

TEST_F(RegistryPlaces, TakesAnEmptyVariableForNone) {
    ::setenv("ORCHARD_REGISTRY", "", 1);
    ::setenv("HOME", directory_.path().c_str(), 1);
    writeRegistry(".config/orchard/registry.reg", "HOME");
    EXPECT_TRUE(hasKey(open(), "HOME"));
}

TEST_F(RegistryPlaces, TellsWhereItLookedWhenThereIsNoFile) {
    if (std::filesystem::exists("/etc/orchard/registry.reg")) {
        GTEST_SKIP() << "this machine has a registry of its own";
    }
    ::setenv("HOME", directory_.path().c_str(), 1);
    EXPECT_FALSE(hasKey(open(), "HKEY_LOCAL_MACHINE"));
    EXPECT_THAT(reports_, ElementsAre("there is no registry file; it is looked for in " + directory_.path() +
                                      "/.config/orchard/registry.reg, /etc/orchard/registry.reg"));
}

TEST_F(RegistryPlaces, ReportsABrokenFileByItsName) {
    const auto file = directory_.write("foreign.reg", "hello\n");
    ::setenv("ORCHARD_REGISTRY", file.c_str(), 1);
    open();
    EXPECT_THAT(reports_, ElementsAre(HasSubstr(file + ":1: ")));
}

TEST_F(RegistryPlaces, ReadsNoDirectoryAndNoPipe) {
    std::vector<std::string> reports;
    const auto report = [&reports](const CString &line) { reports.push_back(line.str()); };
    Registry::read({directory_.path()}, report);
    const auto pipe = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Registry::read({pipe}, report); // would wait for a writer for ever
    EXPECT_THAT(reports, ElementsAre(HasSubstr("not a regular file"), HasSubstr("not a regular file")));
}

TEST_F(RegistryPlaces, RefusesAFileWithoutEnd) {
    const auto file = directory_.write("huge.reg", "REGEDIT4\n[K]\n@=\"x\"\n");
    std::filesystem::resize_file(file, (64U << 20U) + 1);
    std::vector<std::string> reports;
    const auto registry =
        Registry::read({file}, [&reports](const CString &line) { reports.push_back(line.str()); });
    EXPECT_FALSE(hasKey(registry, "K"));
    EXPECT_THAT(reports, ElementsAre(HasSubstr("larger than 64 MiB")));
}

} // namespace
