// What holds for every property set that is shipped.
#include "CM/host/SPString.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/text/PatternReport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

const orchard::InstalledSets &sets() {
    static const orchard::InstalledSets all({std::filesystem::path(SHARE_DIRECTORY) / "toolsets"});
    return all;
}

std::string labelOf(const orchard::PropertyTable::Entry &entry) {
    return entry.metaclass + "/" + entry.property->getName().str();
}

TEST(ShippedPropertySets, HaveNoMistake) {
    EXPECT_GE(sets().count(), 2U);
    for (const std::string &problem : sets().problems()) {
        ADD_FAILURE() << problem;
    }
}

TEST(ShippedPropertySets, DescribeThemselves) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        EXPECT_FALSE(sets().at(i).description().empty()) << sets().at(i).file();
    }
}

TEST(ShippedPropertySets, OfAToolHaveWhatEveryToolNeeds) {
    for (std::size_t i = 0; i < sets().count(); ++i) {
        const auto &set = sets().at(i);
        for (const char *const key :
             {"CheckOut", "CheckOutFromArchive", "ReadOnly", "ReadWrite", "OperationErrorPattern",
              "OperationWarningPattern", "CMChildThreadTimeOut"}) {
            EXPECT_TRUE(set.tool().empty() ||
                        set.table().find("ConfigurationManagement", set.tool(), key) != nullptr)
                << set.name() << " lacks " << key;
        }
    }
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
            bool isQuoted = false;
            for (std::size_t at = 0; at < value.size(); ++at) {
                isQuoted = isQuoted != (value[at] == '"');
                const bool isPath = value.compare(at, 5, "$Unit") == 0 || value.compare(at, 9, "$archived") == 0;
                EXPECT_TRUE(!isPath || isQuoted) << labelOf(entry) << ": " << value;
            }
            EXPECT_FALSE(isQuoted) << labelOf(entry) << " has an open quote";
        }
    }
}

TEST(ShippedPropertySets, HavePatternsThatCanBeUsed) {
    std::string problems;
    orchard::setPatternReporter([&](const orchard::PatternProblem &problem) { problems += problem.message(); });
    for (std::size_t i = 0; i < sets().count(); ++i) {
        for (const auto &entry : sets().at(i).table().entries()) {
            const CString name = entry.property->getName();
            if (name.Find("Pattern") >= 0 || name.Find("Its") >= 0) {
                static_cast<void>(SPString("some text").m(entry.property->getValue(), "i"));
            }
        }
    }
    orchard::setPatternReporter(nullptr);
    EXPECT_EQ(problems, "");
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
    EXPECT_GE(headers, 1);
}

} // namespace
