#include "orchard/storage/FileMoves.h"

#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orchard {

bool isThere(const std::string &path) {
    struct stat state {};
    return ::lstat(path.c_str(), &state) == 0;
}

int moveWithoutReplacing(const std::string &from, const std::string &to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno == EINVAL || errno == ENOSYS) { // not every file system supports it
        if (isThere(to)) {
            return EEXIST;
        }
        if (std::rename(from.c_str(), to.c_str()) == 0) {
            return 0;
        }
    }
    if (errno == EXDEV && platform::isRegularFile(from)) {
        return platform::copyFile(from, to, true) && platform::deleteFile(from) ? 0 : errno;
    }
    return errno;
}

namespace {

/// Whether the file at the new place is the unit's own, for example copied there by a tool.
bool isCopy(const FileMoves::Entry &entry) {
    FileText copy;
    FileText original;
    if (copy.read(entry.to) != FileRead::done || original.read(entry.from) != FileRead::done) {
        return false;
    }
    return entry.unit->isSaveUnit() ? bodyHashOf(copy.text) == bodyHashOf(original.text)
                                    : copy.text == original.text;
}

} // namespace

std::size_t FileMoves::addDirectory(std::string from, std::string to) {
    directories_.push_back({std::move(from), std::move(to), {}});
    return directories_.size() - 1;
}

void FileMoves::add(UnitElement &unit, std::string from, std::string to, std::optional<std::size_t> directory) {
    if (directory) {
        directories_[*directory].entries.push_back(entries_.size());
    }
    entries_.push_back({&unit, std::move(from), std::move(to), directory});
}

/// The file with its new name in the old directory.
std::string FileMoves::halfWayPlace(const Entry &entry) const {
    const Directory &directory = directories_[*entry.directory];
    return directory.from + entry.to.substr(directory.to.size());
}

/// The file with its old name in the new directory.
std::string FileMoves::placeInMoved(const Entry &entry) const {
    const Directory &directory = directories_[*entry.directory];
    return directory.to + entry.from.substr(directory.from.size());
}

void FileMoves::findFaults(std::vector<std::pair<const UnitElement *, std::string>> &faults) const {
    for (const Entry &entry : entries_) {
        // If only the new one exists, a tool has moved it already.
        if (!entry.directory && isThere(entry.to) && isThere(entry.from)) {
            faults.emplace_back(entry.unit, "the file " + entry.to + " already exists");
        }
        if (entry.directory && halfWayPlace(entry) != entry.from && isThere(halfWayPlace(entry))) {
            faults.emplace_back(entry.unit, "the file " + halfWayPlace(entry) + " already exists");
        }
    }
    for (const Directory &directory : directories_) {
        if (isThere(directory.to) && isThere(directory.from)) {
            faults.emplace_back(entries_[directory.entries.front()].unit,
                                "the directory " + directory.to + " already exists");
        }
    }
}

void FileMoves::makeRoom() {
    const auto make = [this](const std::string &path) {
        std::vector<std::string> missing;
        std::string directory(directoryOfPath(path));
        while (!directory.empty() && !isThere(directory)) {
            missing.push_back(directory);
            directory = directoryOfPath(directory);
        }
        for (auto at = missing.rbegin(); at != missing.rend() && ::mkdir(at->c_str(), 0777) == 0; ++at) {
            made_.push_back(*at);
        }
    };
    std::string last;
    for (Entry &entry : entries_) {
        entry.wasThere = isThere(entry.from);
        if (!entry.directory && directoryOfPath(entry.to) != last) {
            last = directoryOfPath(entry.to);
            make(entry.to);
        }
    }
    for (const Directory &directory : directories_) {
        make(directory.to);
    }
}

void FileMoves::look() {
    for (Entry &entry : entries_) {
        const bool old = isThere(entry.from);
        const bool fresh = isThere(entry.to);
        entry.state = old ? (fresh ? State::both : State::open) : (fresh ? State::done : State::none);
        if (entry.state == State::both && !isCopy(entry)) {
            entry.state = State::blocked;
        }
        if (entry.state == State::none && entry.directory && isThere(halfWayPlace(entry))) {
            entry.state = State::halfWay;
        }
        if (entry.state == State::none && entry.wasThere) {
            entry.state = State::lost;
        }
    }
}

bool FileMoves::any(State state) const {
    return std::ranges::any_of(entries_, [state](const Entry &entry) { return entry.state == state; });
}

/// Returns whether the directory was moved as one, with the files that belong to no unit.
bool FileMoves::moveWhole(const Directory &directory) {
    const auto isAhead = [this](std::size_t at) {
        const State state = entries_[at].state;
        return state == State::open || state == State::halfWay || state == State::lost || state == State::none;
    };
    if (!std::ranges::all_of(directory.entries, isAhead) || !isThere(directory.from)) {
        return false;
    }
    // A CM tool may have created the directory without moving anything into it.
    static_cast<void>(::rmdir(directory.to.c_str()));
    if (moveWithoutReplacing(directory.from, directory.to) != 0) {
        return false;
    }
    moved_.emplace_back(directory.from, directory.to);
    return true;
}

bool FileMoves::moveOne(const std::string &from, const std::string &to, Problems &problems) {
    std::error_code ignored; // if this fails, the move reports it
    std::filesystem::create_directories(directoryOfPath(to), ignored);
    if (const int error = moveWithoutReplacing(from, to); error != 0) {
        problems.push_back({from, 0, 0, "the file can't be moved to " + to + ": " + std::strerror(error)});
        return false;
    }
    moved_.emplace_back(from, to);
    return true;
}

bool FileMoves::carryOut(Problems &problems) {
    bool all = true;
    for (const Directory &directory : directories_) {
        const bool whole = moveWhole(directory);
        for (const std::size_t at : directory.entries) {
            Entry &entry = entries_[at];
            const bool ahead = entry.state == State::open || entry.state == State::halfWay;
            if (!whole || !ahead) {
                continue;
            }
            const std::string place = placeInMoved(entry);
            entry.byUs = entry.state == State::halfWay || place == entry.to || moveOne(place, entry.to, problems);
            entry.failed = !entry.byUs;
            all = all && entry.byUs;
            entry.state = entry.byUs ? State::done : State::none;
        }
    }
    for (Entry &entry : entries_) {
        if (entry.state == State::open || entry.state == State::halfWay) {
            const std::string from = entry.state == State::open ? entry.from : halfWayPlace(entry);
            entry.byUs = moveOne(from, entry.to, problems);
            entry.failed = !entry.byUs;
            all = all && entry.byUs;
            entry.state = entry.byUs ? State::done : entry.state;
        }
    }
    return all;
}

void FileMoves::takeBack(Problems &problems) {
    for (auto at = moved_.rbegin(); at != moved_.rend(); ++at) {
        if (const int error = moveWithoutReplacing(at->second, at->first); error != 0) {
            problems.push_back(
                {at->second, 0, 0, "can't be moved back to " + at->first + ": " + std::strerror(error)});
        }
    }
    moved_.clear();
    for (auto at = made_.rbegin(); at != made_.rend(); ++at) {
        static_cast<void>(::rmdir(at->c_str())); // fails if something was added to it
    }
    made_.clear();
}

} // namespace orchard
