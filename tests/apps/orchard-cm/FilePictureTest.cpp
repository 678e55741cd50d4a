#include "apps/orchard-cm/operation/FilePicture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

using orchard_cm::pictureOf;
namespace fs = std::filesystem;

namespace {
struct FilePicture : testing::Test {
    fs::path file = fs::temp_directory_path() / ("picture ö " + std::to_string(getpid()));
    void TearDown() override { fs::remove(file); }
    void write(const std::string &text) const { std::ofstream(file) << text; }
};
} // namespace

TEST_F(FilePicture, TellsAChangedContentOfTheSameSize) {
    write("one");
    const auto before = pictureOf(file.string());
    write("two");
    EXPECT_FALSE(before.sameContent(pictureOf(file.string())));
    write("one");
    EXPECT_TRUE(before.sameContent(pictureOf(file.string())));
}
TEST_F(FilePicture, TellsAFileThatIsNotThere) {
    EXPECT_FALSE(pictureOf(file.string()).exists);
    const auto before = pictureOf(file.string());
    write("");
    EXPECT_FALSE(before.sameContent(pictureOf(file.string())));
}
TEST_F(FilePicture, GoesByTheOwnersPermission) {
    write("x");
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_FALSE(pictureOf(file.string()).writable);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(pictureOf(file.string()).writable);
}
