// The registry's text form.
#include "CM/platform/Registry.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using platform::Registry;
using platform::RegistryValue;
using testing::ElementsAre;
using testing::IsEmpty;

class RegistryText : public testing::Test {
  protected:
    Registry parse(std::string_view text) {
        return Registry::parse(text, "r.reg", [this](const CString &line) { reports_.push_back(line.str()); });
    }
    /// A registry of one key, "K", with these lines below it.
    Registry parseValues(const std::string &lines) { return parse("REGEDIT4\n[K]\n" + lines); }
    static std::string textOf(const Registry &registry, const char *name) {
        const auto value = registry.value("K", name);
        return !value ? "(none)" : value->type == RegistryValue::Type::text ? value->text.str() : "(no text)";
    }
    static unsigned long numberOf(const Registry &registry, const char *name) {
        const auto value = registry.value("K", name);
        return value && value->type == RegistryValue::Type::dword ? value->number : ~0UL;
    }
    static std::vector<int> bytesOf(const Registry &registry, const char *name) {
        const auto value = registry.value("K", name);
        return value && value->type == RegistryValue::Type::binary
                   ? std::vector<int>(value->bytes.begin(), value->bytes.end())
                   : std::vector<int>{-1};
    }

    std::vector<std::string> reports_;
};

TEST_F(RegistryText, OfAnyNumberOfBadLinesIsReadWithNobodyToTell) {
    std::string lines = "REGEDIT4\n[K]\n";
    for (int line = 0; line < 200; ++line) {
        lines += "rubbish\n";
    }
    EXPECT_EQ(textOf(Registry::parse(lines + "\"a\"=\"b\"\n", "r.reg", {}), "a"), "b");
}

TEST_F(RegistryText, ReadsTextsNumbersAndBytes) {
    const auto registry = parseValues("@=\"default\"\n\"text\"=\"value\"\n\"number\"=dword:0000002a\n"
                                      "\"bytes\"=hex:01,ff, 2\n\"none\"=hex:\n\"typed\"=hex(7):41,00,00\n");
    EXPECT_EQ(textOf(registry, ""), "default");
    EXPECT_EQ(textOf(registry, "text"), "value");
    EXPECT_EQ(numberOf(registry, "number"), 42U);
    EXPECT_THAT(bytesOf(registry, "bytes"), ElementsAre(1, 255, 2));
    EXPECT_THAT(bytesOf(registry, "none"), IsEmpty());
    EXPECT_THAT(bytesOf(registry, "typed"), ElementsAre(0x41, 0, 0));
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("", "text", "number", "bytes", "none", "typed"));
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, TakesEscapesInTextsAndNames) {
    const auto registry = parseValues(R"("a\\b\"c"="C:\\dir\\\"x\".dll")"s + "\n");
    EXPECT_EQ(textOf(registry, "a\\b\"c"), R"(C:\dir\"x".dll)");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, KeepsMetacharactersInTexts) {
    EXPECT_EQ(textOf(parseValues("\"a=[;]\"=\"; [x] = y\"\n"), "a=[;]"), "; [x] = y");
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

TEST_F(RegistryText, PassesOverCommentsAndBlankLines) {
    const auto registry = parse("REGEDIT4 \n; [A]\n\n  ; x\n[K] ; the key\n\"a\"=\"b\" ; said\n\"n\"=dword:1;\n"
                                "\"h\"=hex:01 ; one\n");
    EXPECT_EQ(textOf(registry, "a"), "b");
    EXPECT_EQ(numberOf(registry, "n"), 1U);
    EXPECT_THAT(bytesOf(registry, "h"), ElementsAre(1));
    EXPECT_FALSE(registry.hasKey("A"));
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, GoesOnWithBytesOnTheNextLine) {
    const auto registry = parseValues("\"a\"=hex:01,\\\n  02,\\ \r\n  03\n\"b\"=\"c\"\n");
    EXPECT_THAT(bytesOf(registry, "a"), ElementsAre(1, 2, 3));
    EXPECT_EQ(textOf(registry, "b"), "c");
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, TakesTextsAndNumbersGivenAsBytes) {
    const auto registry =
        parseValues("\"a\"=hex(2):25,41,25,00\n\"n\"=hex(4):01,02,00,00\n\"m\"=hex(5):00,00,02,01\n");
    EXPECT_EQ(textOf(registry, "a"), "%A%");
    EXPECT_EQ(numberOf(registry, "n"), 0x201U);
    EXPECT_EQ(numberOf(registry, "m"), 0x201U);
    const auto wide = parse("Windows Registry Editor Version 5.00\n[K]\n\"a\"=hex(1):41,00,42,00,00,00\n");
    EXPECT_EQ(textOf(wide, "a"), "AB");
}

TEST_F(RegistryText, RemovesValuesAndKeys) {
    const auto registry =
        parse("REGEDIT4\n[K]\n\"a\"=\"1\"\n\"b\"=\"2\"\n\"A\"=-\n[K\\Sub]\n[L]\n@=\"x\"\n@=-\n[-k\\sub]\n");
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("b"));
    EXPECT_FALSE(registry.hasKey("K\\Sub"));
    EXPECT_TRUE(registry.hasKey("L"));
    EXPECT_THAT(registry.valueNames("L"), IsEmpty());
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(RegistryText, JoinsAKeyThatComesTwice) {
    EXPECT_THAT(parse("REGEDIT4\n[K]\n\"a\"=\"1\"\n[L]\n[k]\n\"b\"=\"2\"\n").valueNames("K"),
                ElementsAre("a", "b"));
}

TEST_F(RegistryText, KeepsBracketsInAKeysName) {
    EXPECT_TRUE(parse("REGEDIT4\n[A\\[x]\\B]\n").hasKey("A\\[x]\\B"));
}

TEST_F(RegistryText, TakesAForeignFileForEmpty) {
    EXPECT_FALSE(parse("[K]\n\"a\"=\"b\"\n").hasKey("K"));
    EXPECT_FALSE(parse("").hasKey("K"));
    EXPECT_FALSE(parse("REGEDIT5\n[K]\n").hasKey("K"));
    const auto reason = "r.reg:1:1: this is no registry file: its first line must be \"REGEDIT4\"";
    EXPECT_THAT(reports_, ElementsAre(reason, reason, reason));
}

TEST_F(RegistryText, ReportsABrokenLineAndKeepsTheOthers) {
    const auto registry = parseValues("\"a\"=\"1\"\n\"b\"=\"C:\\dir\"\n\"c\"=\"3\"\n");
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("a", "c"));
    EXPECT_THAT(reports_, ElementsAre("r.reg:4:8: a backslash in a text is written twice"));
}

TEST_F(RegistryText, GivesNoValuesBelowABrokenKeyToTheKeyBefore) {
    const auto registry = parse("REGEDIT4\n[K]\n[L\n\"a\"=\"1\"\n[M]\n\"b\"=\"2\"\n");
    EXPECT_THAT(registry.valueNames("K"), IsEmpty());
    EXPECT_THAT(registry.valueNames("M"), ElementsAre("b"));
    EXPECT_THAT(reports_, ElementsAre("r.reg:3:3: the key has no closing bracket"));
}

TEST_F(RegistryText, PassesOverTheOtherLinesOfBrokenBytes) {
    const auto registry = parseValues("\"a\"=hex:01,zz,\\\n  02,\\\n  03\n\"b\"=\"2\"\n");
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("b"));
    EXPECT_THAT(reports_, ElementsAre("r.reg:3:12: expected a byte of one or two hexadecimal digits"));
}

TEST_F(RegistryText, PassesOverTheOtherLinesOfBytesBelowABrokenKey) {
    EXPECT_TRUE(parse("REGEDIT4\n[K\n\"a\"=hex:01,\\\n  02,\\\n  03\n[L]\n").hasKey("L"));
    EXPECT_THAT(reports_, ElementsAre("r.reg:2:3: the key has no closing bracket"));
}

TEST_F(RegistryText, CountsTheLinesThatBytesGoOnIn) {
    parseValues("\"a\"=hex:01,\\\n  02;\n\"b\"=\n");
    EXPECT_THAT(reports_, ElementsAre("r.reg:5:5: expected a text in quotes, \"dword:\", \"hex:\" or \"-\""));
}

TEST_F(RegistryText, StopsReportingAfterAHundredLines) {
    std::string lines;
    for (int count = 0; count < 150; ++count) {
        lines += "x\n";
    }
    parseValues(lines);
    ASSERT_EQ(reports_.size(), 101U);
    EXPECT_EQ(reports_.back(), "r.reg: 50 more lines can't be read");
}

TEST_F(RegistryText, NeedsNoReport) { EXPECT_FALSE(Registry::parse("x", "r.reg", nullptr).hasKey("K")); }

struct BrokenLine {
    const char *name;
    std::string line;
    const char *report;
};

void PrintTo(const BrokenLine &line, std::ostream *stream) { *stream << line.line; }

class BrokenRegistryLine : public testing::TestWithParam<BrokenLine> {};

TEST_P(BrokenRegistryLine, IsReportedWithPlaceAndReason) {
    std::vector<std::string> reports;
    const auto registry = Registry::parse("REGEDIT4\n[K]\n" + GetParam().line + "\n\"last\"=\"kept\"\n", "r.reg",
                                          [&reports](const CString &line) { reports.push_back(line.str()); });
    EXPECT_THAT(reports, ElementsAre(GetParam().report));
    EXPECT_THAT(registry.valueNames("K"), ElementsAre("last"));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BrokenRegistryLine,
    testing::Values(
        BrokenLine{"Word", "  word", "r.reg:3:3: expected a key in brackets, a value's name in quotes, or \"@\""},
        BrokenLine{"OpenName", "\"a", "r.reg:3:1: the text has no closing quote"},
        BrokenLine{"NoEqualSign", "\"a\" \"b\"", "r.reg:3:5: expected \"=\" behind the value's name"},
        BrokenLine{"NothingBehindTheName", "\"a\"", "r.reg:3:4: expected \"=\" behind the value's name"},
        BrokenLine{"OpenText", "\"a\"=\"b", "r.reg:3:5: the text has no closing quote"},
        BrokenLine{"BackslashAtTheEnd", "\"a\"=\"b\\", "r.reg:3:7: a backslash in a text is written twice"},
        BrokenLine{"WordBehindAText", "\"a\"=\"b\" c", "r.reg:3:9: expected the end of the line"},
        BrokenLine{"UnknownType", "\"a\"=qword:1",
                   "r.reg:3:5: expected a text in quotes, \"dword:\", \"hex:\" or \"-\""},
        BrokenLine{"NoNumber", "\"a\"=dword:", "r.reg:3:11: expected a hexadecimal number"},
        BrokenLine{"NumberTooLong", "\"a\"=dword:123456789", "r.reg:3:11: the number has more than eight digits"},
        BrokenLine{"WordBehindANumber", "\"a\"=dword:1x", "r.reg:3:12: expected the end of the line"},
        BrokenLine{"NoComma", "\"a\"=hex:01 02", "r.reg:3:12: expected a comma between two bytes"},
        BrokenLine{"NoByte", "\"a\"=hex:,", "r.reg:3:9: expected a byte of one or two hexadecimal digits"},
        BrokenLine{"OpenType", "\"a\"=hex(2:01", "r.reg:3:10: expected the number of a type in parentheses"},
        BrokenLine{"NoType", "\"a\"=hex():01", "r.reg:3:9: expected the number of a type in parentheses"},
        BrokenLine{"HugeType", "\"a\"=hex(fffffffffffffffff):01",
                   "r.reg:3:17: expected the number of a type in parentheses"},
        BrokenLine{"NoColon", "\"a\"=hex 01", "r.reg:3:8: expected \":\" behind \"hex\""},
        BrokenLine{"NumberOfThreeBytes", "\"a\"=hex(4):01,02,03", "r.reg:3:8: a number has four bytes"}),
    [](const auto &line) { return std::string(line.param.name); });

TEST_F(RegistryText, ReportsKeysAndValuesOutOfPlace) {
    parse("REGEDIT4\n\"a\"=\"b\"\n[]\n[-\\]\n[-K]\n\"a\"=\"b\"\n[K] x\n[K]\n\"a\"=hex:01,\\");
    EXPECT_THAT(reports_,
                ElementsAre("r.reg:2:1: the value stands before the first key", "r.reg:3:2: the key has no name",
                            "r.reg:4:3: the key has no name", "r.reg:6:1: a removed key can't have values",
                            "r.reg:7:5: expected the end of the line",
                            "r.reg:9:12: the value goes on behind the end of the file"));
}

TEST_F(RegistryText, ReadsFifteenMegabytesOfHostileNames) {
    // One long key with many values, and many keys with a long common start: neither is looked up the slow way.
    std::string text = "REGEDIT4\n[" + std::string(1U << 20U, 'k') + "]\n";
    for (int count = 0; count < 300'000; ++count) {
        text += "\"" + std::to_string(count) + "\"=\"x\"\n";
    }
    for (int count = 0; count < 100'000; ++count) {
        text += "[" + std::string(80, 'p') + std::to_string(count) + "]\n[-" + std::to_string(count) + "]\n";
    }
    const auto registry = parse(text);
    EXPECT_EQ(registry.valueNames(CString('K', 1 << 20)).size(), 300'000U);
    EXPECT_TRUE(registry.hasKey(CString('P', 80) + "99999"));
    EXPECT_THAT(reports_, IsEmpty());
}

} // namespace
