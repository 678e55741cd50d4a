// Tests the administrators' page: every key that is read has a row there.

// With the sanitizers GCC 12 reports std::regex as using uninitialised memory.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include "apps/orchard-cm/toolcheck/KnownKeys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using Words = std::set<std::string>;

std::string read(const fs::path &file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    EXPECT_FALSE(text.str().empty()) << file;
    return text.str();
}

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// Adds the first group of every match in lower case, since keys ignore case.
void collect(const std::string &text, const std::regex &pattern, Words &words) {
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
        words.insert(lower((*match)[1].str()));
    }
}

/// Returns the texts in backquotes in the first cells of the page's tables.
Words rowsOfThePage() {
    Words rows;
    std::istringstream page(read(fs::path(DOCS_DIRECTORY) / "configuration.md"));
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("| ")) {
            collect(line.substr(0, line.find(" | ")), std::regex("`([^`]+)`"), rows);
        }
    }
    return rows;
}

/// Returns the texts in the sources below a directory that look like keys.
Words literalsBelow(const fs::path &directory) {
    static const std::regex literal(R"re("([A-Z][A-Za-z]+(?:_[A-Za-z]+)*)")re");
    static const std::regex comment("//[^\n]*");
    Words words;
    for (const auto &entry : fs::recursive_directory_iterator(directory)) {
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h") {
            collect(std::regex_replace(read(entry.path()), comment, ""), literal, words);
        }
    }
    return words;
}

Words without(Words words, const Words &others) {
    std::erase_if(words, [&](const std::string &word) { return others.contains(word); });
    return words;
}

/// What the library's sources hold besides keys: values, metaclasses, names in texts and in the provider's
/// interface.
const Words &noKeys() {
    static const Words words{"no",
                             "yes",
                             "none",
                             "true",
                             "both",
                             "general",
                             "scc",
                             "locker",
                             "ask",
                             "custombutton",
                             "basalt",
                             "tessera",
                             "file",
                             "directory",
                             "configurationmanagement",
                             "readwrite",
                             "sccservername",
                             "ccmsyncquestiondlg",
                             "controlled_file_checkout_msg",
                             "properties"};
    return words;
}

} // namespace

TEST(Configuration, HasARowForEveryNamedKeyOfTheHost) {
    Words keys;
    collect(read(fs::path(SOURCE_DIRECTORY) / "orchard/properties/IPN.cpp"),
            std::regex(R"re(const CString IPN::\w+ = "(\w+)";)re"), keys);
    ASSERT_TRUE(keys.contains("headeritsversion"));
    EXPECT_THAT(without(without(keys, rowsOfThePage()), {"configurationmanagement", "general", "cmgeneral"}),
                testing::IsEmpty());
}

TEST(Configuration, HasARowForEveryKeyThatTheCheckOfSetsKnows) {
    Words keys;
    for (const auto &key : orchard_cm::knownKeys()) {
        keys.insert(lower(std::string(key.name)));
    }
    ASSERT_TRUE(keys.contains("multirecorddelimiter"));
    EXPECT_THAT(without(keys, rowsOfThePage()), testing::IsEmpty());
}

TEST(Configuration, HasARowForEveryKeyInTheSourcesOfTheLibrary) {
    Words keys;
    for (const auto *const folder : {"core", "command", "dispatch", "questions"}) {
        keys.merge(literalsBelow(fs::path(SOURCE_DIRECTORY) / "CM/CMSupport" / folder));
    }
    ASSERT_TRUE(keys.contains("ignorearchiveitemswithoutdot"));
    Words rows = rowsOfThePage();
    for (const std::string &row : Words(rows)) {
        rows.insert(row.starts_with("$") ? row.substr(1) : row); // arguments of templates
    }
    EXPECT_THAT(without(without(keys, rows), noKeys()), testing::IsEmpty());
}

TEST(Configuration, HasARowForEverySettingOfTheDefaults) {
    Words keys;
    collect(read(fs::path(SOURCE_DIRECTORY) / "share/toolsets/defaults.toml"),
            std::regex(R"re((?:^|\n)(\w+) = )re"), keys);
    keys.erase("description");
    ASSERT_TRUE(keys.contains("cmtool"));
    EXPECT_THAT(without(keys, rowsOfThePage()), testing::IsEmpty());
}
