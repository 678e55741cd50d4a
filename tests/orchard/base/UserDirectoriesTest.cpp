#include "orchard/base/UserDirectories.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(UserDirectory, ARelativeConfigurationHomeDoesNotCount) {
    setenv("XDG_CONFIG_HOME", "relative", 1);
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(orchard::userDirectory(), "/home/u/.config/orchard");
    unsetenv("XDG_CONFIG_HOME");
}

TEST(CacheDirectory, IsApartFromTheUsersFiles) {
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(orchard::cacheDirectory(), "/home/u/.cache/orchard");
    setenv("XDG_CACHE_HOME", "/var/tmp/u", 1);
    EXPECT_EQ(orchard::cacheDirectory(), "/var/tmp/u/orchard");
    unsetenv("XDG_CACHE_HOME");
}

} // namespace
