// Workplace: a directory of its own for one test, with a project under RCS in it, and the real programs run there.
#pragma once

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

    /// The one JSON object that the program wrote; a discarded value if it wrote something else.
    [[nodiscard]] nlohmann::json json() const { return nlohmann::json::parse(out, nullptr, false); }
};

class Workplace {
  public:
    /// Makes the directory; its name holds a blank and an umlaut.
    Workplace();
    ~Workplace();
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;

    [[nodiscard]] const std::filesystem::path &directory() const { return directory_; }

    /// Sets a variable of the environment of all that is run from now on.
    void setEnvironment(const std::string &name, const std::string &value) { environment_[name] = value; }
    /// Whose hands work from now on, as RCS sees it.
    void becomeUser(const std::string &name);

    /// Runs a shell command in the directory.
    Ran shell(const std::string &command);
    /// Runs orchard-cm in the directory, with the words as they are.
    Ran cm(const std::vector<std::string> &words, const std::string &input = {});
    /// Starts it, to be waited for with finish().
    pid_t start(const std::vector<std::string> &words);
    Ran finish(pid_t pid);

    /// Whether a process is gone within a few seconds; whoever reaps it may take a moment.
    static bool endsSoon(pid_t pid);

    /// The bytes of a file; empty if there is none.
    [[nodiscard]] static std::string read(const std::filesystem::path &file);
    static void write(const std::filesystem::path &file, std::string_view text);
    static void makeExecutable(const std::filesystem::path &file);

  private:
    pid_t spawn(const std::vector<std::string> &words, const std::string &input);

    std::filesystem::path directory_;
    std::filesystem::path channels_; ///< where what a program writes is kept meanwhile
    std::map<std::string, std::string> environment_;
};

/// The word in single quotes, for the shell.
std::string quoted(const std::string &word);

} // namespace tools
