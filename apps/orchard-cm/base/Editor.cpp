#include "apps/orchard-cm/base/Editor.h"

#include "apps/orchard-cm/base/EditedText.h"
#include "apps/orchard-cm/base/Failure.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ; // NOLINT(readability-redundant-declaration)

namespace orchard_cm {

namespace {

constexpr auto otherWays = "Give the comment with --log TEXT or --log-file FILE.";

std::string editorCommand() {
    for (const char *const name : {"VISUAL", "EDITOR"}) {
        if (const char *const value = std::getenv(name); value != nullptr && *value != '\0') {
            return value;
        }
    }
    throw Failure(ExitCode::usage, "there is no comment, and no editor is set to write one",
                  std::string(otherWays) + " Or set VISUAL or EDITOR to the command of your editor.");
}

/// Creates a file that exists as long as the object does.
class DraftFile {
  public:
    explicit DraftFile(const std::string &text) {
        path_ = (std::filesystem::temp_directory_path() / "orchard-comment-XXXXXX").string();
        const int handle = mkstemp(path_.data());
        if (handle < 0) {
            throw Failure(ExitCode::failed,
                          "no file can be created for the comment: " + std::string(std::strerror(errno)));
        }
        close(handle);
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~DraftFile() { unlink(path_.c_str()); }
    DraftFile(const DraftFile &) = delete;
    DraftFile &operator=(const DraftFile &) = delete;

    [[nodiscard]] std::string &path() { return path_; }
    [[nodiscard]] std::string text() const {
        std::ifstream stream(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

  private:
    std::string path_;
};

/// Leaves Ctrl-C to the editor alone while it exists.
class InterruptsAway {
  public:
    InterruptsAway() {
        struct sigaction ignore = {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGINT, &ignore, &before_);
    }
    ~InterruptsAway() { sigaction(SIGINT, &before_, nullptr); }
    InterruptsAway(const InterruptsAway &) = delete;
    InterruptsAway &operator=(const InterruptsAway &) = delete;

  private:
    struct sigaction before_ = {};
};

/// Runs the command with the file as its last argument, as a shell would. Returns its exit status, or -1 if it
/// could not be run.
int runEditor(std::string command, std::string &file) {
    command += " \"$1\"";
    std::string shell = "sh";
    std::string flag = "-c";
    char *const words[] = {shell.data(), flag.data(), command.data(), shell.data(), file.data(), nullptr};
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t interrupts;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    posix_spawnattr_setsigdefault(&attributes, &interrupts);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    pid_t child = -1;
    const int failed = posix_spawn(&child, "/bin/sh", nullptr, &attributes, words, environ);
    posix_spawnattr_destroy(&attributes);
    int status = 0;
    if (failed != 0) {
        return -1;
    }
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

std::string edit(const std::string &text) {
    if (isatty(STDIN_FILENO) == 0 || isatty(STDERR_FILENO) == 0) {
        throw Failure(ExitCode::usage, "there is no comment, and no terminal on which to write one", otherWays);
    }
    const std::string command = editorCommand();
    DraftFile draft(text);
    const InterruptsAway whileItRuns;
    if (runEditor(command, draft.path()) != 0) {
        throw Failure(ExitCode::failed, "the editor '" + command + "' failed, so nothing was done", otherWays);
    }
    return withoutRemarks(draft.text());
}

} // namespace orchard_cm
