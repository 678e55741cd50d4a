#include "CM/CMSupport/core/ProviderLookUp.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

using testing::HasSubstr;

namespace {

class ProviderLookUp : public CoreFixture {
  protected:
    ProviderLookUp() {
        ::setenv("ORCHARD_REGISTRY", (scratch / "registry.reg").c_str(), 1);
        write(scratch / "basalt.so", "");
    }
    ~ProviderLookUp() override { ::unsetenv("ORCHARD_REGISTRY"); }

    void writeRegistry(const std::string &providerRegKey, const std::string &key, const std::string &path) {
        write(scratch / "registry.reg", "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\SourceCodeControlProvider]\n"
                                        "\"ProviderRegKey\"=" +
                                            providerRegKey + "\n\n[HKEY_LOCAL_MACHINE\\" + key +
                                            "]\n\"SccServerPath\"=" + path + "\n");
    }
    [[nodiscard]] std::string quotedPath() const { return '"' + (scratch / "basalt.so").string() + '"'; }
};

TEST_F(ProviderLookUp, FollowsTheKeyThatTheRegistryNames) {
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", quotedPath());
    const auto library = provider::findLibrary();
    ASSERT_TRUE(library.has_value());
    EXPECT_EQ(library->path, (scratch / "basalt.so").string());
    EXPECT_EQ(library->key, "HKEY_LOCAL_MACHINE\\Software\\Basalt");
}

TEST_F(ProviderLookUp, PutsTheServerNameIntoAKeyThatIsAFormat) {
    writeRegistry("\"Software\\\\Basalt\\\\%s\"", "Software\\Basalt\\SCCServerName", quotedPath());
    EXPECT_TRUE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, IsNotHurtByAHostileFormat) {
    writeRegistry("\"%n%s%s%n%99999999d%*c%\"", "%nSCCServerName%s%n%99999999d%*c%", quotedPath());
    EXPECT_TRUE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, FailsOnAProviderFileThatDoesNotExist) {
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", "\"/nowhere/basalt.so\"");
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, RefusesARelativePath) {
    std::filesystem::current_path(scratch);
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", "\"basalt.so\"");
    EXPECT_FALSE(provider::findLibrary().has_value());
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", "\"./basalt.so\"");
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, FailsOnAnEmptyPath) {
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", "\"\"");
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, FailsOnAValueThatIsNoText) {
    writeRegistry("dword:00000001", "Software\\Basalt", quotedPath());
    EXPECT_FALSE(provider::findLibrary().has_value());
    writeRegistry("\"Software\\\\Basalt\"", "Software\\Basalt", "dword:00000001");
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, FailsOnATextThatWouldHaveToBeExpanded) {
    writeRegistry("hex(1):41,00", "A", quotedPath());
    EXPECT_TRUE(provider::findLibrary().has_value());
    writeRegistry("hex(2):41,00", "A", quotedPath());
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, FailsOnAKeyThatIsMissing) {
    writeRegistry("\"Software\\\\Other\"", "Software\\Basalt", quotedPath());
    EXPECT_FALSE(provider::findLibrary().has_value());
}

TEST_F(ProviderLookUp, PutsTheReasonOfABrokenRegistryIntoTheLog) {
    write(scratch / "registry.reg", "this is no registry\n");
    EXPECT_FALSE(provider::findLibrary().has_value());
    ASSERT_FALSE(host.logLines.empty());
    EXPECT_EQ(host.logLines[0].name, 4);
    EXPECT_EQ(host.logLines[0].source, "../CM/CMSupport/Property");
    EXPECT_THAT(host.logLines[0].text.str(), HasSubstr("registry.reg"));
    EXPECT_EQ(host.logsOpen, 0);
}

TEST(FormatOneArgument, LeavesAPlainTextAsItIs) {
    EXPECT_EQ(provider::formatOneArgument("Software\\Basalt", "X"), "Software\\Basalt");
    EXPECT_EQ(provider::formatOneArgument("", "X"), "");
}

TEST(FormatOneArgument, GivesItsArgumentToTheFirstPlaceAlone) {
    EXPECT_EQ(provider::formatOneArgument("a%sb%sc", "X"), "aXb%sc");
}

TEST(FormatOneArgument, TakesADoubledPercentAsOne) {
    EXPECT_EQ(provider::formatOneArgument("100%%s %s%", "%s"), "100%s %s%");
}

} // namespace
