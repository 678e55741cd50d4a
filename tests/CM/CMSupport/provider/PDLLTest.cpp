// Tests the general class that holds a library.
#include "CM/CMSupport/provider/PDLL.h"
#include "tests/support/double_provider/DoubleProvider.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

constexpr auto entry = "SccInitialize";

TEST(PDLL, LoadsTheLibraryThatItIsGiven) {
    PDLL library;
    EXPECT_FALSE(library.isHeld());
    EXPECT_EQ(library.entry(entry), nullptr);
    library.LoadDll(DOUBLE_PROVIDER, 0);
    EXPECT_TRUE(library.isHeld());
    EXPECT_NE(library.entry(entry), nullptr);
    EXPECT_EQ(library.entry("SccNothing"), nullptr);
    EXPECT_EQ(library.loadError(), "");
}

TEST(PDLL, LoadsTheLibraryThatWasNamedBefore) {
    PDLL library;
    EXPECT_EQ(library.SetDllName(DOUBLE_PROVIDER), 1);
    library.LoadDll(nullptr);
    EXPECT_TRUE(library.isHeld());
}

TEST(PDLL, KeepsACopyOfTheName) {
    PDLL library;
    std::string name = DOUBLE_PROVIDER;
    library.SetDllName(name.c_str());
    name.assign(name.size(), 'x');
    library.LoadDll(nullptr);
    EXPECT_TRUE(library.isHeld());
}

TEST(PDLL, IsNotHeldIfLoadingFailsAndKnowsWhy) {
    PDLL library;
    library.LoadDll("/nowhere/none.so");
    EXPECT_FALSE(library.isHeld());
    EXPECT_THAT(library.loadError().str(), HasSubstr("none.so"));
    library.LoadDll(DOUBLE_PROVIDER);
    EXPECT_TRUE(library.isHeld());
    EXPECT_EQ(library.loadError(), "");
}

TEST(PDLL, IsNotHeldWithoutAName) {
    PDLL library;
    library.LoadDll(nullptr);
    EXPECT_FALSE(library.isHeld());
    library.SetDllName(DOUBLE_PROVIDER);
    EXPECT_EQ(library.SetDllName(nullptr), 1) << "null forgets the name";
    library.LoadDll(nullptr);
    EXPECT_FALSE(library.isHeld());
}

TEST(PDLL, RefusesANameWhileALibraryIsLoadedAndLoadsTheFirstOneAgain) {
    PDLL library;
    library.LoadDll(DOUBLE_PROVIDER);
    EXPECT_EQ(library.SetDllName(DOUBLE_PROVIDER_WITHOUT_CHOICE), 0);
    library.LoadDll(DOUBLE_PROVIDER_WITHOUT_CHOICE);
    EXPECT_TRUE(library.isHeld());
    EXPECT_NE(library.entry("SccGetProjPath"), nullptr) << "the other library lacks it";
}

TEST(PDLL, KeepsEntriesValidWhenItLoadsAgain) {
    PDLL library;
    library.LoadDll(DOUBLE_PROVIDER);
    const auto access = reinterpret_cast<support::DoubleProvider *(*)()>(library.entry("doubleProvider"));
    access()->name = "before";
    library.LoadDll(nullptr);
    EXPECT_EQ(access()->name, "before") << "it was never unloaded";
}

TEST(PDLL, InitializesForTheFirstUserOnly) {
    PDLL library;
    library.SetDllName(DOUBLE_PROVIDER);
    EXPECT_EQ(library.Initialize(0), 1);
    EXPECT_TRUE(library.isHeld());
    EXPECT_EQ(library.Initialize(0), 0);
    library.Uninitialize();
    EXPECT_TRUE(library.isHeld()) << "one user is left";
    library.Uninitialize();
    EXPECT_FALSE(library.isHeld());
    EXPECT_EQ(library.Initialize(0), 0) << "the name is forgotten";
}

TEST(PDLL, CountsAUserEvenIfThereIsNoName) {
    PDLL library;
    EXPECT_EQ(library.Initialize(0), 0);
    library.SetDllName(DOUBLE_PROVIDER);
    EXPECT_EQ(library.Initialize(0), 0) << "the second user";
    EXPECT_FALSE(library.isHeld());
}

TEST(PDLL, FailsToInitializeALibraryThatCannotBeLoaded) {
    PDLL library;
    library.SetDllName("/nowhere/none.so");
    EXPECT_EQ(library.Initialize(0), 0);
}

TEST(PDLL, LoadingCountsNoUser) {
    PDLL library;
    library.LoadDll(DOUBLE_PROVIDER);
    library.Uninitialize();
    EXPECT_TRUE(library.isHeld()) << "there is no user to take off";
}

TEST(PDLL, UnloadsWhateverTheCountIsWhenItEnds) {
    PDLL watcher;
    {
        PDLL library;
        library.LoadDll(DOUBLE_PROVIDER);
        reinterpret_cast<support::DoubleProvider *(*)()>(library.entry("doubleProvider"))()->name = "before";
    }
    watcher.LoadDll(DOUBLE_PROVIDER);
    EXPECT_EQ(reinterpret_cast<support::DoubleProvider *(*)()>(watcher.entry("doubleProvider"))()->name, "Double");
}

} // namespace
