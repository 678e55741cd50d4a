// The provider's key in the text of a registry.
#include "providers/subversion/RegistryText.h"

#include <gtest/gtest.h>

namespace svnscc {

namespace {

using Texts = std::map<std::string, std::string>;

Texts read(const std::string &contents) {
    return textsOfKey(contents, "HKEY_LOCAL_MACHINE\\Software\\Subversion\\SCCServer");
}

const std::string heading = "[HKEY_LOCAL_MACHINE\\Software\\Subversion\\SCCServer]\n";

TEST(ProviderRegistry, HasTheTextsOfTheKey) {
    EXPECT_EQ((Texts{{"repositoryroot", "svn://h/r"}, {"user", "alice"}}),
              read("REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\Other]\n\"User\"=\"bob\"\n\n" + heading +
                   "\"RepositoryRoot\"=\"svn://h/"
                   "r\"\n\"User\"=\"alice\"\n\n[HKEY_LOCAL_MACHINE\\Software]\n\"User\"=\"c\"\n"));
}

TEST(ProviderRegistry, ComparesNamesWithoutRegardToCase) {
    EXPECT_EQ((Texts{{"user", "Alice"}}),
              read("REGEDIT4\r\n[hkey_local_machine\\SOFTWARE\\subversion\\sccserver]\r\n\"USER\"=\"Alice\"\r\n"));
}

TEST(ProviderRegistry, ReadsEscapesAndIgnoresOtherValues) {
    EXPECT_EQ((Texts{{"a", "C:\\x \"y\""}}),
              read("REGEDIT4\n" + heading +
                   "\"a\"=\"C:\\\\x \\\"y\\\"\"\n\"b\"=dword:00000001\n\"c\"=\"open\n"
                   "@=\"default\"\n\"d\"=\"x\" more\n\"e\n\\"));
}

TEST(ProviderRegistry, ReadsUtf8AndUtf16WithTheirMarks) {
    const std::string text = "Windows Registry Editor Version 5.00\n" + heading + "\"user\"=\"";
    EXPECT_EQ((Texts{{"user", "Jürgen"}}), read("\xEF\xBB\xBF" + text + "Jürgen\"\n"));
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += c;
        wide += '\0';
    }
    // "ü", a character of two units, and a unit without its partner
    wide += std::string("\xFC\0\x3D\xD8\x00\xDE\x3D\xD8\"\0\n\0", 12);
    EXPECT_EQ((Texts{{"user", "ü\U0001F600\uFFFD"}}), read(wide));
}

TEST(ProviderRegistry, IsEmptyWithoutTheFirstLine) {
    EXPECT_TRUE(read(heading + "\"user\"=\"alice\"\n").empty());
    EXPECT_TRUE(read("").empty());
}

} // namespace

} // namespace svnscc
