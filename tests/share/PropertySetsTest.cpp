// Tests what every shipped property set has in common.
#include "CM/host/SPString.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/text/CompiledPattern.h"
#include "orchard/text/PatternReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

const orchard::InstalledSets &sets() {
    static const orchard::InstalledSets all({std::filesystem::path(SHARE_DIRECTORY) / "toolsets"});
    return all;
}

std::string labelOf(const orchard::PropertyTable::Entry &entry) {
    return entry.metaclass + "/" + entry.property->getName().str();
}

TEST(ShippedPropertySets, HaveNoMistake) {
    EXPECT_GE(sets().count(), 6U);
    for (const std::string &problem : sets().problems()) {
        ADD_FAILURE() << problem;
    }
}

TEST(ShippedPropertySets, DescribeThemselves) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        EXPECT_FALSE(sets().at(i).description().empty()) << sets().at(i).file();
    }
}

std::string nameOf(const orchard::PropertyTable::Entry &entry) { return entry.property->getName().str(); }

bool isPattern(const std::string &key) {
    return key.find("Pattern") != std::string::npos || key.find("Its") != std::string::npos ||
           key == "MultiRecordDelimiter";
}

TEST(ShippedPropertySets, AreThereForFiveTools) {
    std::vector<std::string> tools;
    for (std::size_t i = 0; i < sets().count(); ++i) {
        if (!sets().at(i).tool().empty()) {
            tools.push_back(sets().at(i).tool());
        }
    }
    EXPECT_THAT(tools, testing::UnorderedElementsAre("CVS", "Git", "Mercurial", "RCS", "Subversion"));
}

/// A tool without locks has no command for them: an empty command would count as a success.
TEST(ShippedPropertySets, HaveEveryKeyThatTheOperationsRead) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        for (const char *const key : {"AddMember",
                                      "AddMember_ControlledFile",
                                      "AddMember_WithoutCheckOutCheckInDirectory",
                                      "ArchiveRoot",
                                      "AskOnCheckoutReadWrite",
                                      "CMArchive",
                                      "CMArchiveSelection",
                                      "CMChildThreadTimeOut",
                                      "CMSaveOnCheckOut",
                                      "CheckIn",
                                      "CheckOut",
                                      "CheckOutCheckInDirectoryOnceDuringAddToArchive",
                                      "CheckOutFromArchive",
                                      "ConnectToCMRepository",
                                      "Delete",
                                      "DeleteDirectory",
                                      "Fetch",
                                      "FetchFromArchive",
                                      "HeaderFile",
                                      "HeaderInfoItsRepositoryPath",
                                      "HeaderItsLocker",
                                      "HeaderItsVersion",
                                      "History",
                                      "ListArchive",
                                      "ListArchiveItsLocker",
                                      "ListArchiveItsMode",
                                      "ListArchiveItsVersion",
                                      "ListArchiveItsWorkingFile",
                                      "Move",
                                      "MoveDirectory",
                                      "MultiRecordDelimiter",
                                      "OperationErrorPattern",
                                      "OperationWarningPattern",
                                      "PostConnectToCMRepository",
                                      "ReadOnly",
                                      "ReadWrite",
                                      "RefusedInLabel",
                                      "RefusedInLog",
                                      "Rename",
                                      "RenameDirectory",
                                      "ReportLoadingError",
                                      "Repository",
                                      "ShowAllFilesInArchive",
                                      "SupportTreeRepository",
                                      "UnLockItem"}) {
            EXPECT_TRUE(set.tool().empty() ||
                        set.table().find("ConfigurationManagement", set.tool(), key) != nullptr)
                << set.name() << " lacks " << key;
        }
    }
}

TEST(ShippedPropertySets, OfAToolWithoutLocksHaveNoCommandForThem) {
    for (const char *const tool : {"Git", "Mercurial"}) {
        EXPECT_EQ(sets().find("ConfigurationManagement", tool, "LockItem"), nullptr) << tool;
    }
    for (const char *const tool : {"CVS", "RCS", "Subversion"}) {
        EXPECT_NE(sets().find("ConfigurationManagement", tool, "LockItem"), nullptr) << tool;
    }
}

TEST(ShippedPropertySets, HaveNoCommandThatIsEmptyWhereOneIsNeeded) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        for (const char *const key :
             {"AddMember", "CheckIn", "CheckOut", "CheckOutFromArchive", "ConnectToCMRepository", "Delete",
              "Fetch", "FetchFromArchive", "History", "ListArchive", "Move", "Rename", "UnLockItem"}) {
            const IProperty *const property =
                set.tool().empty() ? nullptr : set.table().find("ConfigurationManagement", set.tool(), key);
            EXPECT_TRUE(set.tool().empty() || (property != nullptr && !property->getValue().IsEmpty()))
                << set.name() << ": " << key;
        }
    }
}

// A comment is inserted as it is: the template has the quotes, and text that would end them is refused.
TEST(ShippedPropertySets, QuoteCommentsAndRefuseWhatBreaksOutOfTheQuotes) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        if (set.tool().empty()) {
            continue;
        }
        int commands = 0;
        for (const auto &entry : set.table().entries()) {
            const std::string value = entry.property->getValue().str();
            bool isQuoted = false;
            for (std::size_t at = 0; !isPattern(nameOf(entry)) && at < value.size(); ++at) {
                isQuoted = isQuoted != (value[at] == '"');
                if (value.compare(at, 4, "$log") == 0) {
                    EXPECT_TRUE(isQuoted) << labelOf(entry) << ": " << value;
                    ++commands;
                }
            }
        }
        EXPECT_GE(commands, 2) << set.name();
        const std::string refused =
            set.table().find("ConfigurationManagement", set.tool(), "RefusedInLog")->getValue().str();
        for (const char sign : std::string_view("\"$`\\>")) {
            EXPECT_NE(refused.find(sign), std::string::npos) << set.name() << " lets a comment hold " << sign;
        }
        EXPECT_EQ(refused.find_first_of("' .,;()&#!"), std::string::npos)
            << set.name() << " refuses what people write";
    }
}

TEST(ShippedPropertySets, RefuseLabelsThatBreakOutOfTheQuotes) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        if (!set.tool().empty()) {
            const std::string refused =
                set.table().find("ConfigurationManagement", set.tool(), "RefusedInLabel")->getValue().str();
            for (const char sign : std::string_view("'\"$`\\>")) {
                EXPECT_NE(refused.find(sign), std::string::npos) << set.name() << " lets a label hold " << sign;
            }
        }
    }
}

// A user's language must not change what the patterns are matched against; LANGUAGE counts even where LC_ALL is
// set.
TEST(ShippedPropertySets, MakeTheirToolsSpeakEnglish) {
    for (const char *const tool : {"CVS", "Git", "Mercurial", "Subversion"}) {
        const IProperty *const program = sets().find("ConfigurationManagement", tool, "Program");
        ASSERT_NE(program, nullptr) << tool;
        EXPECT_GE(program->getValue().Find("LC_ALL=C.UTF-8"), 0) << tool;
        EXPECT_GE(program->getValue().Find("LANGUAGE="), 0) << tool;
    }
    for (const auto &file :
         std::filesystem::directory_iterator(std::filesystem::path(SHARE_DIRECTORY) / "scripts")) {
        std::ifstream stream(file.path());
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        const char *const wanted = file.path().filename() == "common.sh" ? "\nexport LC_ALL=C.UTF-8 LANGUAGE=\n"
                                                                         : "\n. \"${0%/*}/common.sh\"\n";
        EXPECT_NE(text.find(wanted), std::string::npos) << file.path();
    }
}

// The first of these characters ends a command, and the text after it is a file to write.
TEST(ShippedPropertySets, HaveNoRedirectionInACommand) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            const std::string key = nameOf(entry);
            EXPECT_TRUE(isPattern(key) || key.starts_with("Refused") || entry.property->getValue().Find('>') < 0)
                << labelOf(entry);
        }
    }
}

TEST(ShippedPropertySets, NameScriptsThatAreThere) {
    int scripts = 0;
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            const std::string value = entry.property->getValue().str();
            const std::string start = "$OQROOT/scripts/";
            if (const std::size_t at = value.find(start); at != std::string::npos) {
                const std::size_t name = at + start.size();
                EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::path(SHARE_DIRECTORY) / "scripts" /
                                                             value.substr(name, value.find('"', name) - name)))
                    << labelOf(entry);
                ++scripts;
            }
        }
    }
    EXPECT_GE(scripts, 5);
}

TEST(ShippedPropertySets, StandBelowTheNameOfTheirTool) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        for (const auto &entry : set.table().entries()) {
            EXPECT_TRUE(set.tool().empty() ? entry.metaclass == "CMGeneral" || entry.metaclass == "General"
                                           : entry.metaclass == set.tool())
                << set.file() << ": " << labelOf(entry);
        }
    }
}

TEST(ShippedPropertySets, QuoteEveryPath) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            const std::string value = entry.property->getValue().str();
            if (isPattern(nameOf(entry)) || nameOf(entry).starts_with("Refused")) {
                continue;
            }
            bool isQuoted = false;
            for (std::size_t at = 0; at < value.size(); ++at) {
                isQuoted = isQuoted != (value[at] == '"');
                bool isPath = false;
                for (const std::string_view name :
                     {"$Unit", "$archived", "$oldName", "$newName", "$olddir", "$newdir", "$orpdir"}) {
                    isPath = isPath || value.compare(at, name.size(), name) == 0;
                }
                EXPECT_TRUE(!isPath || isQuoted) << labelOf(entry) << ": " << value;
            }
            EXPECT_FALSE(isQuoted) << labelOf(entry) << " has an open quote";
        }
    }
}

TEST(ShippedPropertySets, HavePatternsThatCanBeUsed) {
    std::string problems;
    orchard::setPatternReporter([&](const orchard::PatternProblem &problem) { problems += problem.message(); });
    int patterns = 0;
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            const std::string value = entry.property->getValue().str();
            if (isPattern(nameOf(entry)) && !value.empty()) {
                const orchard::CompiledPattern pattern(value, "i");
                static_cast<void>(SPString("some text").m(entry.property->getValue(), "i"));
                // A key that reads a part of the output has to name the part.
                EXPECT_TRUE(nameOf(entry).find("Its") == std::string::npos || pattern.pairs() >= 2)
                    << labelOf(entry) << " has no group";
                ++patterns;
            }
        }
    }
    orchard::setPatternReporter(nullptr);
    EXPECT_EQ(problems, "");
    EXPECT_GE(patterns, 5 * 5);
}

TEST(ShippedPropertySets, GiveTheArchiveToEachToolAndNotToAll) {
    EXPECT_EQ(sets().find("ConfigurationManagement", "CMGeneral", "CMArchive"), nullptr);
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        EXPECT_TRUE(set.tool().empty() ||
                    set.table().find("ConfigurationManagement", set.tool(), "CMArchive") != nullptr)
            << set.name();
    }
}

TEST(ShippedPropertySets, NameHeadersThatAreThere) {
    int headers = 0;
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            if (entry.property->getName() == "HeaderFile") {
                CString path = entry.property->getValue();
                EXPECT_EQ(path.Replace("$OQROOT", SHARE_DIRECTORY), 1);
                std::ifstream file(path.c_str());
                const std::string text{std::istreambuf_iterator<char>(file), {}};
                EXPECT_NE(text.find('$'), std::string::npos) << path << " holds no keyword";
                EXPECT_EQ(text.find("--"), std::string::npos)
                    << path << " could end the comment that it stands in";
                ++headers;
            }
        }
    }
    EXPECT_EQ(headers, 5);
}

} // namespace
