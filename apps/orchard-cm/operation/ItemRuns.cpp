#include "apps/orchard-cm/operation/ItemRuns.h"

#include <cctype>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>

namespace orchard_cm {

namespace {

bool continuesName(char character) {
    const auto code = static_cast<unsigned char>(character);
    constexpr unsigned char firstBeyondAscii = 0x80;
    return std::isalnum(code) != 0 || character == '_' || code >= firstBeyondAscii;
}

/// The names of files, for finding those that stand in a command.
class Names {
  public:
    explicit Names(const std::vector<std::string> &files) {
        names_.reserve(files.size());
        for (const auto &file : files) {
            names_.push_back(std::filesystem::path(file).filename().string());
        }
        for (std::size_t i = 0; i < names_.size(); ++i) {
            places_[names_[i]].push_back(i);
            lengths_.insert(names_[i].size());
        }
    }

    /// The files whose names stand in the command, not as a part of a longer name; in their order.
    [[nodiscard]] std::set<std::size_t> in(std::string_view command) const {
        std::set<std::size_t> found;
        for (std::size_t at = 0; at < command.size(); ++at) {
            if (at == 0 || std::string_view("/\\ \t\"'=").find(command[at - 1]) != std::string_view::npos) {
                addThoseAt(command.substr(at), found);
            }
        }
        return found;
    }

  private:
    void addThoseAt(std::string_view text, std::set<std::size_t> &found) const {
        for (const std::size_t length : lengths_) {
            if (length == 0 || length > text.size() || (length < text.size() && continuesName(text[length]))) {
                continue;
            }
            if (const auto place = places_.find(text.substr(0, length)); place != places_.end()) {
                found.insert(place->second.begin(), place->second.end());
            }
        }
    }

    std::vector<std::string> names_;
    std::unordered_map<std::string_view, std::vector<std::size_t>> places_;
    std::set<std::size_t> lengths_;
};

/// Which of the files named in a command the run belongs to.
std::optional<std::size_t> choose(const std::set<std::size_t> &named, std::size_t next) {
    if (named.empty()) {
        return {};
    }
    if (const auto ahead = named.lower_bound(next); ahead != named.end()) {
        return *ahead;
    }
    return *named.rbegin();
}

void assignRuns(const std::vector<std::string> &files, const Journal &journal, RunsOfItems &result) {
    const Names names(files);
    std::size_t next = 0;
    for (const JournalRun &run : journal.runs()) {
        if (const auto found = choose(names.in(run.command), next)) {
            result.items[*found].runs.push_back(&run);
            next = *found + 1;
        } else {
            result.shared.push_back(&run);
        }
    }
    if (result.shared.size() == journal.runs().size()) {
        std::size_t taken = 0;
        for (; taken < result.shared.size() && taken < files.size(); ++taken) {
            result.items[taken].runs.push_back(result.shared[taken]);
        }
        result.shared.erase(result.shared.begin(), result.shared.begin() + static_cast<std::ptrdiff_t>(taken));
    }
}

void assignQuestions(const std::vector<std::string> &files, const Journal &journal, RunsOfItems &result) {
    std::size_t next = 0;
    for (const std::string &question : journal.questions()) {
        for (std::size_t i = next; i < files.size(); ++i) {
            if (question.find(files[i]) != std::string::npos) {
                result.items[i].asked = true;
                next = i + 1;
                break;
            }
        }
    }
}

} // namespace

RunsOfItems runsOfItems(const std::vector<std::string> &files, const Journal &journal) {
    RunsOfItems result;
    result.items.resize(files.size());
    assignRuns(files, journal, result);
    assignQuestions(files, journal, result);
    return result;
}

} // namespace orchard_cm
