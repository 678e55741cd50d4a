#include "tests/providers/subversion/Repository.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

namespace provider_test {

namespace {

sockaddr_in localAddress(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    return address;
}

int freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = localAddress(0);
    socklen_t size = sizeof(address);
    EXPECT_EQ(0, ::bind(socket, reinterpret_cast<const sockaddr *>(&address), size));
    EXPECT_EQ(0, ::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size));
    ::close(socket);
    return ntohs(address.sin_port);
}

bool answers(int port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = localAddress(port);
    const bool connected = ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    ::close(socket);
    return connected;
}

} // namespace

std::string shell(const std::string &command) {
    FILE *pipe = ::popen(("export LC_ALL=C.UTF-8 LANGUAGE=; { " + command + "; } 2>&1").c_str(), "r");
    std::string text;
    std::array<char, 4096> part{};
    while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe)) {
        text.append(part.data(), size);
    }
    const int status = ::pclose(pipe);
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return status == 0 ? text : text + " [" + std::to_string(WEXITSTATUS(status)) + "]";
}

std::string inQuotes(const std::string &text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

Server::Server(const std::string &directory) : port_(freePort()) {
    std::string port = std::to_string(port_);
    std::string root = directory;
    std::array<std::string, 9> words = {"svnserve",  "--daemon",      "--foreground", "--listen-host",
                                        "127.0.0.1", "--listen-port", port,           "--root",
                                        root};
    std::array<char *, 10> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        arguments[i] = words[i].data();
    }
    if (::posix_spawnp(&process_, "svnserve", nullptr, nullptr, arguments.data(), environ) != 0) {
        ADD_FAILURE() << "svnserve can't be started";
        return;
    }
    for (int i = 0; i < 500 && !answers(port_); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

Server::~Server() { stop(); }

void Server::stop() {
    if (process_ > 0) {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
        process_ = -1;
    }
}

RepositoryTest::RepositoryTest() {
    EXPECT_EQ("", shell("svnadmin create " + inQuotes(at("repository"))));
    ::mkdir(at("config").c_str(), 0700);
    writeRegistry(url(), at("config"));
    ::setenv("ORCHARD_REGISTRY", at("registry.reg").c_str(), 1);
}

RepositoryTest::~RepositoryTest() { ::unsetenv("ORCHARD_REGISTRY"); }

void RepositoryTest::writeRegistry(const std::string &root, const std::string &configuration,
                                   const std::string &user) const {
    directory_.write("registry.reg", "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Subversion\\SCCServer]\r\n"
                                     "\"RepositoryRoot\"=\"" +
                                         root + "\"\r\n\"ConfigDir\"=\"" + configuration + "\"\r\n\"User\"=\"" +
                                         user + "\"\r\n");
}

std::string RepositoryTest::write(const std::string &name, const std::string &contents) const {
    ::chmod(at(name).c_str(), 0644);
    return directory_.write(name, contents);
}

std::string RepositoryTest::svn(const std::string &arguments) const {
    return shell("svn --non-interactive --config-dir " + inQuotes(at("config")) + " " + arguments);
}

std::string RepositoryTest::lockOwner(const std::string &path) const {
    const std::string text =
        shell("svnlook lock " + inQuotes(at("repository")) + " " + inQuotes(path) + " | sed -n 's/^Owner: //p'");
    return text;
}

bool isWritable(const std::string &path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && (facts.st_mode & S_IWUSR) != 0;
}

} // namespace provider_test
