// Provides one test with its own directory, with a project under RCS, and runs the real programs there.
#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tools {

struct Ran {
    int exit = -1; ///< exit status, or 128 plus the signal that ended the program
    std::string out;
    std::string err;

    /// Returns the single JSON object that the program wrote; a discarded value if it wrote anything else.
    [[nodiscard]] nlohmann::json json() const { return nlohmann::json::parse(out, nullptr, false); }
};

class Workplace {
  public:
    /// Creates the directory; its name contains a space and an umlaut.
    Workplace();
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;

    [[nodiscard]] const std::filesystem::path &directory() const { return directory_; }

    /// Sets a variable of the environment of everything that runs from now on.
    void setEnvironment(const std::string &name, const std::string &value) { environment_[name] = value; }
    /// Sets the user that RCS sees from now on.
    void becomeUser(const std::string &name);

    /// Runs a shell command in the directory.
    Ran shell(const std::string &command);
    /// Runs orchard-cm in the directory, with the words as they are.
    Ran cm(const std::vector<std::string> &words, const std::string &input = {});
    /// Runs it at a terminal, where somebody has typed these lines; `err` is what the terminal shows.
    Ran cmAtTerminal(const std::vector<std::string> &words, const std::string &typed);
    /// Runs it at a terminal that closes as soon as it shows this text, and sends the program that signal, unless
    /// 0.
    Ran cmAtTerminalThatCloses(const std::vector<std::string> &words, const std::string &text, int signal);
    /// Starts it, to be waited for with finish().
    pid_t start(const std::vector<std::string> &words);
    Ran finish(pid_t pid);

    /// Returns whether a process ends within a few seconds; its parent may take a moment to reap it.
    static bool endsSoon(pid_t pid);

    /// Returns the bytes of a file; empty if there is none.
    [[nodiscard]] static std::string read(const std::filesystem::path &file);
    static void write(const std::filesystem::path &file, std::string_view text);
    static void makeExecutable(const std::filesystem::path &file);

  private:
    Ran atTerminal(const std::vector<std::string> &words, const std::string &typed, const std::string &closesAt,
                   int signal);
    /// With a `terminal`, the name of its device, that is the input and the error channel.
    pid_t spawn(const std::vector<std::string> &words, const std::string &input, const char *terminal = nullptr);

    support::TemporaryDirectory temporary_;
    std::filesystem::path channels_ = temporary_ / "orchard tööls"; ///< keeps what a program writes
    std::filesystem::path directory_ = channels_ / "work";
    std::map<std::string, std::string> environment_;
    std::map<pid_t, std::string> running_; ///< what the names of their channels end with
    int started_ = 0;
};

/// Returns the word in single quotes, for the shell.
std::string quoted(const std::string &word);

} // namespace tools
