#include "tests/tools/Workplace.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char **environ; // NOLINT(readability-redundant-declaration)

namespace tools {

namespace fs = std::filesystem;

std::string quoted(const std::string &word) {
    std::string text = "'";
    for (const char character : word) {
        text += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return text + "'";
}

Workplace::Workplace() {
    fs::create_directories(directory_);
    setEnvironment("HOME", directory_.string());
    setEnvironment("XDG_CONFIG_HOME", (channels_ / "config").string());
    setEnvironment("XDG_CACHE_HOME", (channels_ / "cache").string());
    setEnvironment("TZ", "UTC");
    becomeUser("anna");
}

void Workplace::becomeUser(const std::string &name) {
    setEnvironment("LOGNAME", name);
    setEnvironment("USER", name);
}

pid_t Workplace::spawn(const std::vector<std::string> &words, const std::string &input, const char *terminal) {
    write(channels_ / "in", input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string in = terminal != nullptr ? terminal : (channels_ / "in").string();
    const std::string number = std::to_string(++started_);
    const std::string out = (channels_ / ("out" + number)).string();
    const std::string err = terminal != nullptr ? terminal : (channels_ / ("err" + number)).string();
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addchdir_np(&actions, directory_.c_str());

    std::vector<std::string> variables;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text(*variable);
        if (!environment_.contains(std::string(text.substr(0, text.find('='))))) {
            variables.emplace_back(text);
        }
    }
    for (const auto &[name, value] : environment_) {
        variables.push_back(name + "=" + value);
    }
    const auto pointers = [](const std::vector<std::string> &texts) {
        std::vector<char *> list;
        for (const auto &text : texts) {
            list.push_back(const_cast<char *>(text.c_str()));
        }
        list.push_back(nullptr);
        return list;
    };
    pid_t pid = -1;
    const int failed = posix_spawn(&pid, words.front().c_str(), &actions, nullptr, pointers(words).data(),
                                   pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot start " + words.front());
    }
    running_[pid] = number;
    return pid;
}

Ran Workplace::finish(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    Ran ran;
    ran.exit = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    const std::string number = running_[pid];
    running_.erase(pid);
    ran.out = read(channels_ / ("out" + number));
    ran.err = read(channels_ / ("err" + number));
    return ran;
}

Ran Workplace::shell(const std::string &command) { return finish(spawn({"/bin/sh", "-c", command}, {})); }

pid_t Workplace::start(const std::vector<std::string> &words) {
    std::vector<std::string> all{ORCHARD_CM_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    return spawn(all, {});
}

Ran Workplace::cm(const std::vector<std::string> &words, const std::string &input) {
    std::vector<std::string> all{ORCHARD_CM_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    return finish(spawn(all, input));
}

Ran Workplace::cmAtTerminal(const std::vector<std::string> &words, const std::string &typed) {
    return atTerminal(words, typed, {}, 0);
}

Ran Workplace::cmAtTerminalThatCloses(const std::vector<std::string> &words, const std::string &text, int signal) {
    return atTerminal(words, {}, text, signal);
}

Ran Workplace::atTerminal(const std::vector<std::string> &words, const std::string &typed,
                          const std::string &closesAt, int signal) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        throw std::runtime_error("no terminal");
    }
    std::vector<std::string> all{ORCHARD_CM_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    const pid_t pid = spawn(all, {}, ptsname(terminal));
    if (::write(terminal, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size())) {
        throw std::runtime_error("the terminal takes no input");
    }
    std::string shown;
    char piece[4096];
    for (ssize_t length = 0; (length = ::read(terminal, piece, sizeof piece)) > 0;) {
        shown.append(piece, static_cast<std::size_t>(length));
        if (!closesAt.empty() && shown.find(closesAt) != std::string::npos) {
            break;
        }
    }
    if (signal != 0) {
        kill(pid, signal);
    }
    close(terminal);
    Ran ran = finish(pid);
    ran.err = shown;
    return ran;
}

bool Workplace::endsSoon(pid_t pid) {
    for (int i = 0; i < 250 && kill(pid, 0) == 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return kill(pid, 0) != 0;
}

std::string Workplace::read(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void Workplace::write(const fs::path &file, std::string_view text) {
    std::ofstream(file, std::ios::binary) << text;
}

void Workplace::makeExecutable(const fs::path &file) {
    fs::permissions(file, fs::perms::owner_exec, fs::perm_options::add);
}

} // namespace tools
