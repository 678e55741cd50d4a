#include "tests/rooms/Rooms.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

rooms::Table tableOf(const std::string &text) {
    std::istringstream lines(text);
    return rooms::readTable(lines);
}

class SmallTree : public testing::Test {
  protected:
    [[nodiscard]] std::vector<std::string> violations() const {
        return rooms::violations(tree.path(), tableOf("# ground first\nhouse/ground\nhouse/first house/ground\n"
                                                      "house/roof house/first\n"));
    }
    const support::TemporaryDirectory tree;
};

TEST_F(SmallTree, AllowsWhatIsNamedWhatThatMayIncludeAndTheRoomItself) {
    tree.write("house/ground/Door.h", "#include <string>\n");
    tree.write("house/first/Stairs.h", "#include \"house/ground/Door.h\"\n");
    tree.write("house/roof/Tile.cpp", "#include \"house/roof/Tile.h\"\n#include \"house/first/Stairs.h\"\n"
                                      "#include \"house/ground/Door.h\"\n");
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_F(SmallTree, ReportsAReversedArrowWithFileAndLine) {
    tree.write("house/ground/Door.cpp", "#include \"house/ground/Door.h\"\n\n#include \"house/roof/Tile.h\"\n");
    EXPECT_THAT(violations(),
                ElementsAre("house/ground/Door.cpp:3: house/ground may not include house/roof/Tile.h"));
}

TEST_F(SmallTree, ReportsAnIncludeOfWhatIsNotARoom) {
    tree.write("house/first/Stairs.h", "#include \"garden/Tree.h\"\n#include \"Door.h\"\n");
    EXPECT_THAT(violations(), ElementsAre("house/first/Stairs.h:1: house/first may not include garden/Tree.h",
                                          "house/first/Stairs.h:2: house/first may not include Door.h"));
}

TEST_F(SmallTree, ReportsAFolderThatIsNotARoom) {
    tree.write("house/cellar/Wine.h", "");
    EXPECT_THAT(violations(), ElementsAre("house/cellar/Wine.h: its folder is not a room"));
}

TEST(Table, RefusesACircle) {
    EXPECT_THROW(tableOf("house/ground house/first\nhouse/first house/ground\n"), std::runtime_error);
}

TEST(Table, RefusesARoomThatIsThereTwice) {
    EXPECT_THROW(tableOf("house/ground\nhouse/ground\n"), std::runtime_error);
}

TEST(Tree, IncludesFollowTheTable) {
    std::ifstream lines(SOURCE_DIRECTORY "/tests/rooms/rooms.txt");
    const rooms::Table table = rooms::readTable(lines);
    ASSERT_TRUE(table.contains("CM/CMSupport/core"));
    EXPECT_THAT(rooms::violations(SOURCE_DIRECTORY, table), IsEmpty());
}

} // namespace
