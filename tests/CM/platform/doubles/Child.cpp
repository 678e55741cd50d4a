// Does what its first argument says; the child-process tests run it.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

void writeAll(int descriptor, const std::string &text) {
    for (std::size_t done = 0; done < text.size();) {
        const auto count = ::write(descriptor, text.data() + done, text.size() - done);
        if (count <= 0) {
            std::_Exit(3);
        }
        done += static_cast<std::size_t>(count);
    }
}

/// Writes each argument on a separate line, in angle brackets.
void showArguments(int count, char **arguments) {
    for (int index = 2; index < count; ++index) {
        std::printf("<%s>\n", arguments[index]);
    }
}

/// Writes `megabytes` to each channel in turn, more than any pipe holds.
void flood(int megabytes) {
    const std::string out(1U << 20U, 'o');
    const std::string err(1U << 20U, 'e');
    for (int count = 0; count < megabytes; ++count) {
        writeAll(STDERR_FILENO, err);
        writeAll(STDOUT_FILENO, out);
    }
}

/// Writes what a child finds: its input, its group and session, its terminal, its signals, its descriptors.
void showSurroundings() {
    char byte = 0;
    std::printf("input=%zd\n", ::read(STDIN_FILENO, &byte, 1));
    std::printf("group=%d\n", ::getpgrp() == ::getpid() ? 1 : 0);
    std::printf("session=%d\n", ::getsid(0) == ::getpid() ? 1 : 0);
    const int terminal = ::open("/dev/tty", O_RDWR);
    std::printf("terminal=%d\n", terminal >= 0 ? 1 : 0);
    if (terminal >= 0) {
        ::close(terminal);
    }
    sigset_t mask;
    sigprocmask(SIG_SETMASK, nullptr, &mask);
    int blocked = 0;
    int ignored = 0;
    for (int signal = 1; signal < 32; ++signal) {
        struct sigaction action {};
        blocked += sigismember(&mask, signal);
        ignored += sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN ? 1 : 0;
    }
    std::printf("blocked=%d\nignored=%d\n", blocked, ignored);
    int open = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        open += ::fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
    }
    std::printf("open=%d\n", open);
}

} // namespace

int main(int count, char **arguments) {
    const std::string_view what = count > 1 ? arguments[1] : "";
    const int number = count > 2 ? std::atoi(arguments[2]) : 0;
    if (what == "arguments") {
        showArguments(count, arguments);
    } else if (what == "flood") {
        flood(number);
    } else if (what == "surroundings") {
        showSurroundings();
    } else if (what == "exit") {
        return number;
    } else if (what == "raise") {
        std::signal(number, SIG_DFL);
        std::raise(number);
    } else if (what == "both") {
        writeAll(STDOUT_FILENO, "to output\n");
        writeAll(STDERR_FILENO, "to errors\n");
    } else if (what == "bytes") {
        writeAll(STDOUT_FILENO, std::string("\xff\0\xfe\n", 4));
    } else if (what == "hang" || what == "stubborn") {
        if (what == "stubborn") {
            std::signal(SIGTERM, SIG_IGN);
        }
        writeAll(STDOUT_FILENO, std::to_string(::getpid()) + "\n");
        while (true) {
            ::pause();
        }
    } else if (what == "silent") { // closes its channels and runs for another `number` milliseconds
        ::close(STDOUT_FILENO);
        ::close(STDERR_FILENO);
        ::usleep(static_cast<unsigned>(number) * 1000U);
        return 5;
    } else {
        return 2;
    }
    return 0;
}
