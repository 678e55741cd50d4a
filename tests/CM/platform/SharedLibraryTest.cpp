#include "CM/platform/SharedLibrary.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

namespace {

using platform::SharedLibrary;
using testing::HasSubstr;

int callAnswer(const SharedLibrary &library) {
    const auto answer = reinterpret_cast<int (*)()>(library.entry("answer"));
    return answer == nullptr ? -1 : answer();
}

TEST(SharedLibrary, GivesTheEntriesOfALoadedLibrary) {
    SharedLibrary library;
    CString error;
    ASSERT_TRUE(library.load(PLUGIN, error)) << error;
    EXPECT_TRUE(library.isLoaded());
    EXPECT_EQ(callAnswer(library), 42);
    EXPECT_EQ(library.entry("question"), nullptr);
    EXPECT_EQ(library.entry(nullptr), nullptr);
    EXPECT_EQ(error, "");
}

TEST(SharedLibrary, HasNoEntriesUnloaded) {
    SharedLibrary library;
    EXPECT_EQ(library.entry("answer"), nullptr);
    CString error;
    ASSERT_TRUE(library.load(PLUGIN, error));
    library.unload();
    EXPECT_FALSE(library.isLoaded());
    EXPECT_EQ(library.entry("answer"), nullptr);
    library.unload();
}

TEST(SharedLibrary, TellsWhyALibraryCannotBeLoaded) {
    const support::TemporaryDirectory directory;
    SharedLibrary library;
    CString error;
    EXPECT_FALSE(library.load({directory / "none.so"}, error));
    EXPECT_THAT(error.str(), HasSubstr("none.so"));
    EXPECT_FALSE(library.load({directory.write("text.so", "hello")}, error));
    EXPECT_THAT(error.str(), HasSubstr("text.so"));
    EXPECT_FALSE(library.isLoaded());
}

TEST(SharedLibrary, WantsAllThatALibraryNeedsAtOnce) {
    SharedLibrary library;
    CString error;
    EXPECT_FALSE(library.load(BROKEN_PLUGIN, error));
    EXPECT_THAT(error.str(), HasSubstr("nobodyHasThis"));
}

TEST(SharedLibrary, TakesNoEmptyNameForTheProgramItself) {
    SharedLibrary library;
    CString error;
    EXPECT_FALSE(library.load("", error));
    EXPECT_NE(error, "");
    EXPECT_FALSE(library.load({std::string(PLUGIN) + std::string(1, '\0')}, error));
}

TEST(SharedLibrary, KeepsNothingOfTheLibraryItHadWhenALoadFails) {
    SharedLibrary library;
    CString error;
    ASSERT_TRUE(library.load(PLUGIN, error));
    EXPECT_FALSE(library.load("/none/none.so", error));
    EXPECT_FALSE(library.isLoaded());
}

TEST(SharedLibrary, CanBeMoved) {
    SharedLibrary first;
    CString error;
    ASSERT_TRUE(first.load(PLUGIN, error));
    SharedLibrary second(std::move(first));
    EXPECT_EQ(callAnswer(second), 42);
    SharedLibrary third;
    third = std::move(second);
    EXPECT_EQ(callAnswer(third), 42);
}

} // namespace
