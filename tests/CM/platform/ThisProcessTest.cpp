#include "CM/platform/ThisProcess.h"

#include <gmock/gmock.h>

#include <array>
#include <unistd.h>

namespace {

TEST(ThisProcess, IsNamedByItsNumberAndHost) {
    std::array<char, 256> host = {};
    ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
    const std::string text = platform::describeThisProcess();
    EXPECT_THAT(text, testing::StartsWith("process " + std::to_string(getpid()) + " "));
    EXPECT_THAT(text, testing::EndsWith(std::string(" on ") + host.data()));
}

} // namespace
