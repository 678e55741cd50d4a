#include "tests/orchard/storage/Workbench.h"

#include "orchard/storage/UnitHeader.h"

#include <sys/stat.h>
#include <tuple>

using orchard::HeaderScan;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string withHeader(std::string_view header) {
    return std::string(declaration) + "<!--\n" + std::string(header) + "\n-->\n<class format=\"1\" id=\"x\">\n";
}

TEST(ScanHeader, AnyFirstPartGivesTheWholeAnswerOrAsksForMore) {
    for (const std::string &text :
         {withHeader("$Id$\nsecond"), withHeader(""), "\xEF\xBB\xBF" + withHeader("a"), std::string("<class>"),
          std::string("no unit"), std::string("<!-- x --><!-- y --><class>"), std::string("<classes>"),
          std::string(declaration) + "  \r\n<subsystem/>", std::string("<?xml version")}) {
        const HeaderScan whole = orchard::scanHeader(text, true);
        for (std::size_t size = 0; size <= text.size(); ++size) {
            const HeaderScan part = orchard::scanHeader(std::string_view(text).substr(0, size), false);
            if (part.state != HeaderScan::tooFew) {
                EXPECT_EQ(part.state, whole.state) << text.substr(0, size);
                EXPECT_EQ(part.text, whole.text) << text.substr(0, size);
            }
        }
        EXPECT_NE(whole.state, HeaderScan::tooFew) << text;
    }
    EXPECT_EQ(orchard::scanHeader(withHeader("$Id$\nsecond"), true).text, "$Id$\nsecond");
}

using Row = std::tuple<const char *, const char *, const char *>;
class ForeignHeader : public testing::TestWithParam<Row> {};
INSTANTIATE_TEST_SUITE_P(Rows, ForeignHeader,
                         testing::Values(Row{"Empty", "", "it is empty"},
                                         Row{"Blank", " \n", "it ends after its header"},
                                         Row{"CutInTheComment", "<!--\n$Id$", "does not end"},
                                         Row{"CutInTheDeclaration", "<?xml version=", "does not end"},
                                         Row{"CutBehindTheComment", "<!-- a -->\n", "ends after its header"},
                                         Row{"AnotherRoot", "<!-- a -->\n<html>", "not a unit file"},
                                         Row{"AnElementThatIsNoFile", "<attribute>", "not a unit file"},
                                         Row{"Conflict", "<<<<<<< mine\n<class>", "not a unit file"},
                                         Row{"Text", "int main();", "not a unit file"}),
                         [](const auto &row) { return std::get<0>(row.param); });

TEST_P(ForeignHeader, IsToldWithItsReason) {
    const HeaderScan scan = orchard::scanHeader(std::get<1>(GetParam()), true);
    EXPECT_EQ(scan.state, HeaderScan::foreign);
    EXPECT_THAT(scan.fault, HasSubstr(std::get<2>(GetParam())));
}

class Header : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    void setHeader(const std::string &file, std::string_view header) {
        edit(file, declaration, std::string(declaration) + "<!--\n" + std::string(header) + "\n-->\n");
    }
};

TEST_F(Header, IsReadAnewWithoutTheRestOfTheFile) {
    const std::string file = unitFile("Valve.ocl");
    write(file, withHeader("$Revision: 1.7 $") + std::string(std::size_t{1} << 20U, '\0') + "no unit at all");
    EXPECT_TRUE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(unit("Valve")->getCMHeader(), "$Revision: 1.7 $");
    EXPECT_TRUE(messages.empty());
}

TEST_F(Header, MayBeLongerThanTheFirstRead) {
    const std::string header = "$Log$\n" + std::string(300'000, 'x');
    setHeader(unitFile("Valve.ocl"), header);
    EXPECT_TRUE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(unit("Valve")->getCMHeader().str(), header);
}

TEST_F(Header, OfMoreThanAMebibyteIsRefused) {
    setHeader(unitFile("Valve.ocl"), std::string((std::size_t{1} << 20U) + 1, 'x'));
    EXPECT_FALSE(unit("Valve")->updateCMHeader());
    EXPECT_THAT(messages, ElementsAre(HasSubstr("longer than 1 MiB")));
}

TEST_F(Header, OfABrokenFileStaysAsItWasAndIsToldOnce) {
    const std::string file = unitFile("Valve.ocl");
    const std::string good = read(file);
    setHeader(file, "$Revision: 1.1 $");
    ASSERT_TRUE(unit("Valve")->updateCMHeader());
    for (const char *const broken : {"<!--\n$Revision: 1.2 $", "", "#!/bin/sh\n"}) {
        write(file, broken);
        EXPECT_FALSE(unit("Valve")->updateCMHeader());
        EXPECT_EQ(unit("Valve")->getCMHeader(), "$Revision: 1.1 $");
    }
    std::filesystem::remove(file);
    EXPECT_FALSE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(unit("Valve")->getCMHeader(), "$Revision: 1.1 $");
    EXPECT_THAT(messages, ElementsAre(HasSubstr(file)));
    write(file, good);
    EXPECT_TRUE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(unit("Valve")->getCMHeader(), "");
    std::filesystem::remove(file);
    EXPECT_FALSE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(messages.size(), 2U) << "it was well in between";
}

TEST_F(Header, OfABrokenFileIsNotToldWhereNobodyIsToHearOfIt) {
    write(unitFile("Valve.ocl"), "");
    EXPECT_FALSE(element(unit("Valve")).updateHeader(true));
    EXPECT_TRUE(messages.empty());
    EXPECT_FALSE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(messages.size(), 1U) << "it has not been told yet";
}

TEST_F(Header, APipeInTheFilesPlaceIsNotWaitedFor) {
    std::filesystem::remove(unitFile("Valve.ocl"));
    ASSERT_EQ(::mkfifo(unitFile("Valve.ocl").c_str(), 0666), 0);
    EXPECT_FALSE(unit("Valve")->updateCMHeader());
    EXPECT_THAT(messages, ElementsAre(HasSubstr("not a regular file")));
}

TEST_F(Header, AClassInItsOwnersFileHasThatOnes) {
    setHeader(unitFile("Control/AlarmList.ocl"), "$Revision: 1.4 $");
    IUnit *const entry = unit("AlarmEntry");
    EXPECT_TRUE(entry->updateCMHeader());
    EXPECT_EQ(entry->getCMHeader(), "$Revision: 1.4 $");
    EXPECT_EQ(unit("AlarmList")->getCMHeader(), "$Revision: 1.4 $");
}

TEST_F(Header, OfAnEmbeddedFileAreItsFirstLines) {
    IUnit *const embedded = IUnit::getByFile("wiring.txt");
    ASSERT_NE(embedded, nullptr);
    EXPECT_THAT(embedded->getCMHeader().str(), testing::StartsWith("Terminal  Signal\n")) << "read when opened";
    const std::string file = embedded->getFullFileName().str();
    write(file, "$Revision: 1.3 $\n" + std::string(5000, 'x'));
    EXPECT_TRUE(embedded->updateCMHeader());
    EXPECT_EQ(embedded->getCMHeader(), "$Revision: 1.3 $\n");
    write(file, std::string_view("$Revision: 1.3 $\n\0", 18));
    EXPECT_TRUE(embedded->updateCMHeader());
    EXPECT_EQ(embedded->getCMHeader(), "") << "no text";
    std::filesystem::remove(file);
    EXPECT_FALSE(embedded->updateCMHeader());
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(Header, TheModeFollowsTheFileAlsoForEmbeddedFilesAndForClassesInOthersFiles) {
    for (const auto &[name, file] : {std::pair("Valve", "Valve.ocl"), std::pair("wiring.txt", "wiring.txt"),
                                     std::pair("AlarmEntry", "Control/AlarmList.ocl")}) {
        IUnit *const one = unit(name);
        ::chmod(unitFile(file).c_str(), 0444);
        EXPECT_FALSE(one->isReadOnly()) << name;
        one->updateMode("");
        EXPECT_TRUE(one->isReadOnly()) << name;
        ::chmod(unitFile(file).c_str(), 0644);
        one->updateMode("");
        EXPECT_FALSE(one->isReadOnly()) << name;
    }
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    unit("Valve")->updateMode("");
    std::filesystem::remove(unitFile("Valve.ocl"));
    unit("Valve")->updateMode("");
    EXPECT_TRUE(unit("Valve")->isReadOnly()) << "a missing file says nothing";
    ASSERT_FALSE(unit("Panel")->isReadOnly());
    std::filesystem::remove(unitFile("Panel.ocl"));
    unit("Panel")->updateMode("");
    EXPECT_FALSE(unit("Panel")->isReadOnly());
}

} // namespace
