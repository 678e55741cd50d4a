// Tests the text form of the registry, and look-ups in it.
#include "CM/platform/Registry.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using platform::Registry;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RegistryText : public testing::Test {
  protected:
    Registry parse(std::string_view text) {
        return Registry::parse(text, "r.reg", [this](const CString &line) { reports_.push_back(line.str()); });
    }
    /// A registry of one key, "K", with these lines below it.
    Registry parseValues(const std::string &lines) { return parse("REGEDIT4\n[K]\n" + lines); }
    static std::string textOf(const Registry &registry, const char *name, const char *key = "K") {
        const auto value = registry.text(key, name);
        return value ? value->text.str() : "(none)";
    }

    std::vector<std::string> reports_;
};

TEST_F(RegistryText, IsFoundByKeyAndNameWithoutCase) {
    const auto registry = parse("REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\Maker]\n\"ProviderRegKey\"=\"x\"\n");
    EXPECT_EQ(textOf(registry, "PROVIDERREGKEY", R"(hkey_local_machine\SOFTWARE\maker)"), "x");
    EXPECT_EQ(textOf(registry, "ProviderRegKey", R"(HKEY_LOCAL_MACHINE\Software\Maker\)"), "x");
    EXPECT_EQ(textOf(registry, "ProviderRegKey", R"(HKEY_LOCAL_MACHINE\Software)"), "(none)");
    EXPECT_EQ(textOf(registry, "Provider", R"(HKEY_LOCAL_MACHINE\Software\Maker)"), "(none)");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, TheDefaultValueHasTheEmptyName) {
    EXPECT_EQ(textOf(parseValues("@=\"default\"\n"), ""), "default");
    EXPECT_EQ(textOf(parseValues("\"a\"=\"b\"\n"), ""), "(none)");
}

TEST_F(RegistryText, NamesOfAKeyAreSortedAndKeepTheirSpelling) {
    const auto registry = parseValues("\"Zebra\"=\"1\"\n\"apple\"=\"2\"\n\"number\"=dword:0000002a\n");
    EXPECT_THAT(registry.textNames("k"), ElementsAre("apple", "Zebra"));
    EXPECT_THAT(registry.textNames("none"), IsEmpty());
}

TEST_F(RegistryText, TakesEscapesInTextsAndNames) {
    const auto registry = parseValues(R"("a\\b\"c"="C:\\dir\\\"x\".dll")"s + "\n");
    EXPECT_EQ(textOf(registry, "a\\b\"c"), R"(C:\dir\"x".dll)");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, KeepsMetacharactersInTexts) {
    EXPECT_EQ(textOf(parseValues("\"a=[;]\"=\"; [x] = y\"\n"), "a=[;]"), "; [x] = y");
}

TEST_F(RegistryText, KeepsBracketsInAKeysName) {
    EXPECT_EQ(textOf(parse("REGEDIT4\n[A\\[x]\\B]\n@=\"b\"\n"), "", "A\\[x]\\B"), "b");
}

TEST_F(RegistryText, TakesEitherLineEndAndNoneAtTheEnd) {
    EXPECT_EQ(textOf(parse("REGEDIT4\r\n\r\n[K]\r\n\"a\"=\"b\"\r\n"), "a"), "b");
    EXPECT_EQ(textOf(parse("REGEDIT4\n[K]\n\"a\"=\"b\""), "a"), "b");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, PassesOverAByteOrderMark) {
    EXPECT_EQ(textOf(parse("\xEF\xBB\xBFREGEDIT4\n[K]\n\"a\"=\"b\"\n"), "a"), "b");
}

TEST_F(RegistryText, TakesTheNewerFirstLine) {
    EXPECT_EQ(textOf(parse("Windows Registry Editor Version 5.00\r\n[K]\r\n\"a\"=\"\xC3\xA4\"\r\n"), "a"),
              "\xC3\xA4");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, ReadsUtf16WithItsMark) {
    std::string wide = "\xFF\xFE";
    for (const char character : "REGEDIT4\r\n[K]\r\n\"a\"=\""s) {
        wide += character;
        wide += '\0';
    }
    wide += "\xE4\0\xAC\x20\x3D\xD8\x00\xDE\x00\xD8\"\0"s; // a two-, a three-, a four-byte one, half a pair
    EXPECT_EQ(textOf(parse(wide), "a"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, ReadsBytesAsTextsOfEitherKind) {
    const auto registry = parseValues("\"a\"=hex(2):25,41, 25,00\n\"b\"=hex(1):42,43,00\n\"c\"=\"%C%\"\n");
    EXPECT_EQ(textOf(registry, "a"), "%A%");
    EXPECT_TRUE(registry.text("K", "a")->isExpandable);
    EXPECT_EQ(textOf(registry, "b"), "BC");
    EXPECT_FALSE(registry.text("K", "b")->isExpandable);
    EXPECT_EQ(textOf(registry, "c"), "%C%");
    EXPECT_FALSE(registry.text("K", "c")->isExpandable) << "the type decides, not the text";
    const auto wide = parse("Windows Registry Editor Version 5.00\n[K]\n\"a\"=hex(1):41,00,42,00,00,00\n");
    EXPECT_EQ(textOf(wide, "a"), "AB");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, ContinuesBytesOnTheNextLine) {
    const auto registry = parseValues("\"a\"=hex(2):41,\\\n  42,\\ \r\n\t43,00 ; said\n\"b\"=\"c\"\n");
    EXPECT_EQ(textOf(registry, "a"), "ABC");
    EXPECT_EQ(textOf(registry, "b"), "c");
    EXPECT_EQ(textOf(parseValues("\"a\"=hex(2):41,\\"), "a"), "A") << "the file ends there";
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, PassesOverWhateverIsNoText) {
    const auto registry = parse("REGEDIT4 \n; [A]\n\n  ; x\n[K] ; the key\n\"a\"=\"b\" ; said\n\"n\"=dword:1\n"
                                "\"h\"=hex:01,\\\n  02\n\"q\"=hex(b):01\n\"r\"=-\nword\n");
    EXPECT_THAT(registry.textNames("K"), ElementsAre("a"));
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, OfAKeyThatComesTwiceIsJoinedAndTheLastValueCounts) {
    const auto registry =
        parse("REGEDIT4\n[K]\n\"a\"=\"1\"\n\"b\"=\"1\"\n\"c\"=\"1\"\n[L]\n[k]\n\"B\"=\"2\"\n\"c\"=-\n");
    EXPECT_THAT(registry.textNames("K"), ElementsAre("a", "B"));
    EXPECT_EQ(textOf(registry, "b"), "2");
}

TEST_F(RegistryText, BelowARemovedKeyBelongsToNoKey) {
    EXPECT_THAT(parse("REGEDIT4\n[K]\n[-K\\Sub]\n\"a\"=\"1\"\n").textNames("K"), IsEmpty());
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, OfAForeignFileIsEmpty) {
    EXPECT_THAT(parse("[K]\n\"a\"=\"b\"\n").textNames("K"), IsEmpty());
    EXPECT_THAT(parse("").textNames("K"), IsEmpty());
    EXPECT_THAT(parse("REGEDIT5\n[K]\n\"a\"=\"b\"\n").textNames("K"), IsEmpty());
    const auto reason = "r.reg:1: this is not a registry file: its first line must be \"REGEDIT4\"";
    EXPECT_THAT(reports_, ElementsAre(reason, reason, reason));
}

TEST_F(RegistryText, WithoutAClosingBracketGivesNoValuesToTheKeyBefore) {
    const auto registry = parse("REGEDIT4\n[K]\n[L\n\"a\"=\"1\"\n[M]\n\"b\"=\"2\"\n");
    EXPECT_THAT(registry.textNames("K"), IsEmpty());
    EXPECT_THAT(registry.textNames("M"), ElementsAre("b"));
    EXPECT_THAT(reports_, ElementsAre("r.reg:3: the key has no closing bracket"));
}

struct BrokenLine {
    const char *name;
    std::string line;
    const char *report;
};

void PrintTo(const BrokenLine &line, std::ostream *stream) { *stream << line.line; }

class BrokenRegistryLine : public testing::TestWithParam<BrokenLine> {};

TEST_P(BrokenRegistryLine, IsReportedAndLeftOut) {
    std::vector<std::string> reports;
    const auto registry = Registry::parse("REGEDIT4\n[K]\n" + GetParam().line + "\n\"last\"=\"kept\"\n", "r.reg",
                                          [&reports](const CString &line) { reports.push_back(line.str()); });
    EXPECT_THAT(reports, ElementsAre(GetParam().report));
    EXPECT_THAT(registry.textNames("K"), ElementsAre("last"));
}

constexpr const char *badName = "r.reg:3: expected NAME=VALUE with the name in quotes";
constexpr const char *badText = "r.reg:3: the text has no closing quote, or a backslash that isn't written twice";
constexpr const char *badBytes = "r.reg:3: expected bytes of two hexadecimal digits, separated by commas";

INSTANTIATE_TEST_SUITE_P(Lines, BrokenRegistryLine,
                         testing::Values(BrokenLine{"OpenName", "\"a", badName},
                                         BrokenLine{"NothingAfterTheName", "\"a\"", badName},
                                         BrokenLine{"OpenText", "\"a\"=\"b", badText},
                                         BrokenLine{"BackslashAtTheEnd", "\"a\"=\"b\\", badText},
                                         BrokenLine{"SingleBackslash", "\"a\"=\"C:\\dir\"", badText},
                                         BrokenLine{"NoByte", "\"a\"=hex(2):41,zz,\\\n  42", badBytes}),
                         [](const auto &line) { return std::string(line.param.name); });

TEST_F(RegistryText, OfFifteenMegabytesOfHostileNamesIsReadWithoutDelay) {
    // One long key with many values, and many keys with a long common start: neither is looked up the slow way.
    std::string text = "REGEDIT4\n[" + std::string(1U << 20U, 'k') + "]\n";
    for (int count = 0; count < 300'000; ++count) {
        text += "\"" + std::to_string(count) + "\"=\"x\"\n";
    }
    for (int count = 0; count < 100'000; ++count) {
        text += "[" + std::string(80, 'p') + std::to_string(count) + "]\n";
    }
    const auto registry = parse(text + "@=\"last\"\n");
    EXPECT_THAT(registry.textNames(CString('K', 1 << 20)), SizeIs(300'000));
    EXPECT_EQ(registry.text(CString('P', 80) + "99999", "")->text, "last");
    EXPECT_THAT(reports_, IsEmpty());
}

} // namespace
