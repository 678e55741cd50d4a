#include "CM/platform/InheritableFile.h"

#include "CM/platform/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using platform::InheritableFile;
using support::contentsOf;

class FileForAChild : public testing::Test {
  protected:
    support::TemporaryDirectory directory_;
};

TEST_F(FileForAChild, IsEmptiedIfItExists) {
    const std::string path = directory_.write("out", "of last time");
    const InheritableFile file{CString(path)};
    EXPECT_GE(file.handle(), 0);
    EXPECT_EQ(contentsOf(path), "");
}

TEST_F(FileForAChild, HasTheNameAsItIsBlanksIncluded) {
    const std::string path = directory_ / " out ";
    const InheritableFile file{CString(path)};
    EXPECT_GE(file.handle(), 0);
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(FileForAChild, HasNoHandleIfItCannotBeOpened) {
    EXPECT_EQ(InheritableFile(CString(directory_ / "no/such/out")).handle(), -1);
    EXPECT_EQ(InheritableFile(CString()).handle(), -1);
}

TEST_F(FileForAChild, TakesTheChildsOutput) {
    const std::string path = directory_ / "out";
    const InheritableFile file{CString(path)};
    platform::ChildOptions options;
    options.outputDescriptor = file.handle();
    EXPECT_EQ(platform::runChild("/bin/echo done", options).output, "");
    EXPECT_EQ(contentsOf(path), "done\n");
}

TEST_F(FileForAChild, IsClosedOnExecAndWaitsWhereAWriteHasTo) {
    const InheritableFile file{CString(directory_ / "out")};
    EXPECT_NE(::fcntl(file.handle(), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(::fcntl(file.handle(), F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(FileForAChild, IsClosedAtItsEnd) {
    auto file = std::make_unique<InheritableFile>(CString(directory_ / "out"));
    const int handle = file->handle();
    file.reset();
    EXPECT_EQ(::fcntl(handle, F_GETFD), -1);
}

TEST_F(FileForAChild, DoesNotWaitForAReaderOfANamedPipe) {
    const std::string path = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(InheritableFile(CString(path)).handle(), -1);
    const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_GE(InheritableFile(CString(path)).handle(), 0);
    ::close(reader);
}

} // namespace
