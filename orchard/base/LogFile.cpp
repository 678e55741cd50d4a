#include "orchard/base/LogFile.h"

#include "CM/host/LogTrace.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <utility>

namespace orchard {
namespace {

struct TheLog {
    std::ofstream file;
    std::function<void(std::string_view)> listener;
};

TheLog &theLog() {
    static TheLog log;
    return log;
}

void writeTime(std::ostream &stream) {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm parts{};
    localtime_r(&seconds, &parts);
    stream << std::put_time(&parts, "%Y-%m-%d %H:%M:%S") << '.' << std::setw(3) << std::setfill('0')
           << milliseconds;
}

} // namespace

bool setLogFile(const std::filesystem::path &file) {
    std::ofstream &log = theLog().file;
    log.close();
    log.clear();
    if (file.empty()) {
        return true;
    }
    log.open(file, std::ios::app | std::ios::binary);
    return log.is_open();
}

void setLogListener(std::function<void(std::string_view text)> listener) {
    theLog().listener = std::move(listener);
}

} // namespace orchard

LogTrace::Log::Log(int name) : name_(name) {}
LogTrace::Log::~Log() = default;

void LogTrace::Log::Min(const char *sourcePath, int line, const CString &text) {
    auto &log = orchard::theLog();
    if (log.listener) {
        log.listener(text.view());
    }
    if (!log.file.is_open()) {
        return;
    }
    orchard::writeTime(log.file);
    log.file << " [" << name_ << "] " << (sourcePath == nullptr ? "" : sourcePath) << ':' << line << ": ";
    // Indents the further lines of a text so that it stays readable as one record.
    for (const char c : text.view()) {
        log.file << c;
        if (c == '\n') {
            log.file << "    ";
        }
    }
    log.file << '\n' << std::flush;
}
