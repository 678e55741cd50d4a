#include "orchard/locking/ProjectLock.h"

#include "CM/platform/Files.h"
#include "CM/platform/ThisProcess.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <thread>

namespace orchard {

namespace {

using platform::LockFile;
using platform::LockRange;
using Taken = LockFile::Taken;

constexpr std::string_view title = "orchard-lock 1 ";
constexpr std::size_t digits = 20;
constexpr std::size_t lineLength = 256; // of a holder, with its line break
constexpr std::uint64_t firstLine = title.size() + digits + 1;
constexpr std::uint64_t afterLines = firstLine + 1000 * lineLength;

// Locks that stand for something other than bytes of the file are at offsets that the file never reaches.
constexpr LockRange wholeProject{std::uint64_t{1} << 40U, 1};
constexpr LockRange saving{(std::uint64_t{1} << 40U) + 1, 1};
constexpr LockRange counting{(std::uint64_t{1} << 40U) + 2, 1};
constexpr LockRange allUnits{std::uint64_t{1} << 41U, 0};
constexpr std::size_t mostUnits = 256; // up to this many are locked one by one; for more, all are locked

constexpr std::chrono::milliseconds shortestPause{2};
constexpr std::chrono::milliseconds longestPause{50};

/// Where the project's lock is, for all paths that lead to the project.
std::string lockFileOf(const std::string &projectFile) {
    std::error_code error;
    const auto file = std::filesystem::canonical(projectFile, error);
    return (error ? projectFile : file.string()) + ".lock";
}

std::string lineOf(const std::string &command) {
    std::string line = platform::describeThisProcess() + ": " + command;
    std::ranges::replace_if(
        line, [](unsigned char c) { return c < ' ' || c == '\x7f'; }, ' ');
    if (line.size() >= lineLength) {
        const std::string_view more = "...";
        std::size_t end = lineLength - 1 - more.size();
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xc0U) == 0x80U) {
            --end; // not in the middle of a character
        }
        line.resize(end);
        line += more;
    }
    return line;
}

/// A place for the unit's lock, the same one in every program.
std::uint64_t placeOf(std::string_view unit) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char character : unit) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211U;
    }
    return allUnits.first + (hash >> 24U);
}

std::string withoutTail(std::string text) {
    text.erase(std::find(text.begin(), text.end(), '\n'), text.end());
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

/// Returns the lines of the programs that are still running, joined.
std::string holdersIn(const LockFile &file) {
    std::string holders;
    for (std::uint64_t at = firstLine; at < afterLines; at += lineLength) {
        const std::string line = file.read(at, lineLength);
        if (line.empty()) {
            break;
        }
        if (file.isHeldByOther({at, lineLength})) {
            holders += (holders.empty() ? "" : "; ") + withoutTail(line);
        }
    }
    return holders;
}

} // namespace

ProjectLock::ProjectLock(const std::string &projectFile, const std::string &command)
    : file_(lockFileOf(projectFile)), holder_(lineOf(command)) {}

ProjectLock::~ProjectLock() { release(); }

ProjectLock::Answer ProjectLock::waitFor(const LockWaiting &waiting, const std::function<Taken()> &tryOnce) const {
    const auto end = std::chrono::steady_clock::now() + waiting.limit;
    for (auto pause = shortestPause;; pause = std::min(2 * pause, longestPause)) {
        switch (tryOnce()) {
        case Taken::yes:
            return Answer::held;
        case Taken::failed:
            return Answer::impossible;
        case Taken::busy:
            break;
        }
        if (waiting.cancelled && waiting.cancelled()) {
            return Answer::cancelled;
        }
        if (std::chrono::steady_clock::now() >= end) {
            return Answer::busy;
        }
        if (waiting.waits) {
            waiting.waits(otherHolders());
        }
        std::this_thread::sleep_for(pause);
    }
}

ProjectLock::Answer ProjectLock::hold(Held how, const LockWaiting &waiting) {
    const auto kind = how == Held::alone ? LockFile::Kind::exclusive : LockFile::Kind::shared;
    const Answer answer = waitFor(waiting, [&] { return file_.tryLock(wholeProject, kind); });
    if (answer == Answer::held) {
        held_ = how;
        countChange();
        writeHolder();
    }
    return answer;
}

ProjectLock::Answer ProjectLock::holdAlone(const LockWaiting &waiting) { return hold(Held::alone, waiting); }

ProjectLock::Answer ProjectLock::holdBesideOthers(const LockWaiting &waiting) {
    return hold(Held::besideOthers, waiting);
}

Taken ProjectLock::tryUnits(const std::vector<std::uint64_t> &places) {
    for (const std::uint64_t place : places) {
        if (const Taken taken = file_.tryLock({place, 1}, LockFile::Kind::exclusive); taken != Taken::yes) {
            file_.unlock(allUnits); // whoever waits for one of these must not have to wait for the others
            return taken;
        }
    }
    return Taken::yes;
}

ProjectLock::Answer ProjectLock::holdUnits(const std::vector<std::string> &units, const LockWaiting &waiting) {
    if (units.size() > mostUnits) {
        return waitFor(waiting, [&] { return file_.tryLock(allUnits, LockFile::Kind::exclusive); });
    }
    std::vector<std::uint64_t> places;
    std::ranges::transform(units, std::back_inserter(places), placeOf);
    return waitFor(waiting, [&] { return tryUnits(places); });
}

ProjectLock::Answer ProjectLock::holdSaving(const LockWaiting &waiting) {
    return waitFor(waiting, [&] { return file_.tryLock(saving, LockFile::Kind::exclusive); });
}

void ProjectLock::releaseSaving() { file_.unlock(saving); }

void ProjectLock::release() {
    if (held_ == Held::nothing) {
        return;
    }
    countChange();
    eraseHolder();
    held_ = Held::nothing;
    file_.unlock({wholeProject.first, 0});
}

/// Takes the first line that no living program has.
void ProjectLock::writeHolder() {
    for (std::uint64_t at = firstLine; at < afterLines; at += lineLength) {
        if (file_.tryLock({at, lineLength}, LockFile::Kind::exclusive) == Taken::yes) {
            std::string line = holder_;
            line.resize(lineLength - 1, ' ');
            file_.write(at, line + "\n");
            line_ = at;
            return;
        }
    }
}

void ProjectLock::eraseHolder() {
    if (line_) {
        file_.write(*line_, std::string(lineLength - 1, ' ') + "\n");
        file_.unlock({*line_, lineLength});
        line_.reset();
    }
}

std::string ProjectLock::otherHolders() const { return holdersIn(file_); }

std::string ProjectLock::count() const { return file_.read(title.size(), digits); }

/// Counts up, so that the others read the project again. What this program itself changes, it need not.
void ProjectLock::countChange() {
    const LockWaiting moment{std::chrono::seconds(1), {}, {}};
    static_cast<void>(waitFor(moment, [&] { return file_.tryLock(counting, LockFile::Kind::exclusive); }));
    const std::string before = count();
    std::uint64_t number = 0;
    std::from_chars(before.data(), before.data() + before.size(), number);
    std::string after = std::to_string(number + 1);
    after.insert(0, digits - after.size(), '0');
    file_.write(0, std::string(title) + after + "\n");
    file_.unlock(counting);
    seen_ = seen_ == before ? std::optional(after) : std::nullopt;
}

void ProjectLock::beginReading() {
    seen_ = count();
    if (held_ == Held::nothing && file_.isHeldByOther(wholeProject)) {
        seen_.reset(); // what is read may be half of a change
    }
}

std::string programsChanging(const std::string &projectFile) {
    return holdersIn(LockFile(lockFileOf(projectFile)));
}

} // namespace orchard
