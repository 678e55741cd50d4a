#include "orchard/base/LogFile.h"

#include "CM/host/LogTrace.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

class LogFile : public testing::Test {
  protected:
    ~LogFile() override { orchard::setLogFile({}); }
    [[nodiscard]] std::string content() const { return support::contentsOf(file); }
    const support::TemporaryDirectory directory;
    const std::string file = directory / "log";
};

TEST_F(LogFile, HoldsTimeChannelSourceAndText) {
    ASSERT_TRUE(orchard::setLogFile(file));
    LogTrace::Log(LogTrace::Log::cm).Min("../CM/CMSupport/CheckOut", 12, "Executing: co");
    EXPECT_THAT(content(),
                testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}[.][0-9]{3} "
                                      "[[]4[]] [.][.]/CM/CMSupport/CheckOut:12: Executing: co\n"));
}

TEST_F(LogFile, IsAppendedTo) {
    for (const char *const text : {"one", "two"}) {
        ASSERT_TRUE(orchard::setLogFile(file));
        LogTrace::Log(4).Min("s", 1, text);
    }
    EXPECT_NE(content().find("one\n"), std::string::npos);
    EXPECT_NE(content().find("two\n"), std::string::npos);
}

TEST_F(LogFile, SetsInTheFurtherLinesOfAText) {
    ASSERT_TRUE(orchard::setLogFile(file));
    LogTrace::Log(4).Min("s", 1, "first\nsecond");
    EXPECT_TRUE(content().ends_with(": first\n    second\n")) << content();
}

TEST_F(LogFile, IsOffWithoutAFile) {
    orchard::setLogFile({});
    LogTrace::Log(4).Min("s", 1, "nowhere");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(LogFile, ThatCannotBeOpenedIsSaid) { EXPECT_FALSE(orchard::setLogFile("/no/such/directory/log")); }

TEST_F(LogFile, AListenerHearsEachText) {
    std::string heard;
    orchard::setLogListener([&](std::string_view text) { heard += text; });
    LogTrace::Log(4).Min("s", 1, "text");
    orchard::setLogListener({});
    LogTrace::Log(4).Min("s", 1, "later");
    EXPECT_EQ(heard, "text");
}

} // namespace
