#include "bench/Peer.h"

#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

class FileActions {
  public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;

    void open(int descriptor, const std::string &file, int flags) {
        const char *const path = file.empty() ? "/dev/null" : file.c_str();
        posix_spawn_file_actions_addopen(&actions_, descriptor, path, flags, 0666);
    }
    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

} // namespace

void runPeer(const std::vector<std::string> &words, const Streams &streams) {
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string &word : words) {
        arguments.push_back(const_cast<char *>(word.c_str()));
    }
    arguments.push_back(nullptr);
    FileActions actions;
    actions.open(STDIN_FILENO, streams.input, O_RDONLY);
    actions.open(STDOUT_FILENO, streams.output, O_WRONLY | O_CREAT | O_TRUNC);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, arguments[0], actions.get(), nullptr, arguments.data(), environ);
    if (failed != 0) {
        throw std::runtime_error("can't start " + words.front() + ": " + std::strerror(failed));
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error(words.front() + " failed with status " + std::to_string(status));
    }
}

} // namespace bench
