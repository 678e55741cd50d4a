#include "CM/platform/posix/Spawn.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>

extern char **environ; // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

namespace platform::posix {

namespace {

/// Returns a descriptor above the standard ones, which may be closed in the caller and must not be reused.
bool moveAboveStandardStreams(Descriptor &descriptor) {
    if (descriptor.get() <= STDERR_FILENO) {
        descriptor = Descriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    return descriptor.isOpen();
}

/// Returns whether this process has a terminal, on which a child could ask.
bool hasTerminal() {
    const Descriptor terminal(::open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC));
    return terminal.isOpen() || (errno != ENXIO && errno != ENOENT);
}

class SpawnAttributes {
  public:
    SpawnAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        // A new session detaches from the terminal. Without a terminal a group suffices: a scheduler that divides
        // the processor by session would slow a new session for each command down on a busy machine.
        const int apart = hasTerminal() ? POSIX_SPAWN_SETSID : POSIX_SPAWN_SETPGROUP; // group 0: a new one
        posix_spawnattr_setflags(&attributes_,
                                 static_cast<short>(apart | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK));
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;
    [[nodiscard]] const posix_spawnattr_t *get() const { return &attributes_; }

  private:
    posix_spawnattr_t attributes_{};
};

class SpawnActions {
  public:
    /// Standard input is last, since one of the channels may be the caller's own.
    SpawnActions(int output, int errors) {
        posix_spawn_file_actions_init(&actions_);
        note(posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO));
        note(posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO));
        note(posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
#ifdef __GLIBC__
        note(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
#endif
    }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &actions_; }
    /// The errno of an action that could not be added, or 0.
    [[nodiscard]] int failure() const { return failure_; }

  private:
    void note(int result) { failure_ = failure_ == 0 ? result : failure_; }

    posix_spawn_file_actions_t actions_{};
    int failure_ = 0;
};

} // namespace

bool Pipe::open() {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    reading = Descriptor(ends[0]);
    writing = Descriptor(ends[1]);
    return moveAboveStandardStreams(reading) && moveAboveStandardStreams(writing);
}

int spawn(const std::vector<std::string> &words, int output, int errors, pid_t &process) {
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string &word : words) {
        arguments.push_back(const_cast<char *>(word.c_str())); // posix_spawn takes char * but does not write to it
    }
    arguments.push_back(nullptr);
    const SpawnAttributes attributes;
    const SpawnActions actions(output, errors);
    if (actions.failure() != 0) {
        return actions.failure();
    }
    return ::posix_spawnp(&process, arguments.front(), actions.get(), attributes.get(), arguments.data(), environ);
}

} // namespace platform::posix
