#include "orchard/change/ChangePlan.h"

#include "orchard/model/Paths.h"

#include <charconv>

namespace orchard {

namespace {

constexpr std::string_view firstLine = "orchard-change 1";

void addLines(std::string &text, char mark, std::string_view lines) {
    for (std::size_t at = 0; at <= lines.size();) {
        const std::size_t end = std::min(lines.find('\n', at), lines.size());
        text += mark;
        text.append(lines.substr(at, end - at)) += '\n';
        at = end + 1;
    }
}

void addText(std::string &text, const ChangePlan::Text &entry) {
    addLines(text, '-', entry.before);
    addLines(text, '+', entry.after);
    for (const Cut &cut : entry.cuts) {
        text += "cut " + std::to_string(cut.part) + ' ' + std::to_string(cut.begin) + ' ' +
                std::to_string(cut.end) + '\n';
    }
}

/// Reads numbers separated by blanks into all of `numbers`.
bool readNumbers(std::string_view text, std::initializer_list<std::size_t *> numbers) {
    for (std::size_t *const number : numbers) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
        if (error != std::errc()) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    return text.empty();
}

/// Reads one line after the other into a plan.
class Reading {
  public:
    Reading(ChangePlan &plan, const std::string &base) : plan_(plan), base_(base) {}

    [[nodiscard]] bool take(std::string_view line) {
        if (line.starts_with('-') || line.starts_with('+')) {
            return takeTextLine(line.front(), line.substr(1));
        }
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string_view word = line.substr(0, blank);
        const std::string_view value = line.substr(std::min(blank + 1, line.size()));
        if (word == "command") {
            plan_.command = value;
        } else if (word == "removes") {
            plan_.removes = true;
            return readNumbers(value, {&plan_.parts});
        } else if (word == "tool") {
            path_ = &plan_.toolSteps.emplace_back();
            path_->from = full(value);
        } else if (word == "directory") {
            path_ = &plan_.directories.emplace_back();
            path_->from = full(value);
        } else if (word == "file") {
            path_ = &plan_.files.emplace_back();
            path_->from = full(value);
        } else if (word == "text" || word == "own") {
            path_ = &plan_.texts.emplace_back();
            path_->from = path_->to = full(value);
            plan_.texts.back().own = word == "own";
            mark_ = 0;
        } else if (word == "to") {
            if (path_ == nullptr) {
                return false;
            }
            path_->to = full(value);
        } else if (word == "with") {
            return !plan_.files.empty() && readNumbers(value, {&plan_.files.back().directory.emplace()}) &&
                   *plan_.files.back().directory < plan_.directories.size();
        } else if (word == "part") {
            return !plan_.files.empty() && readNumbers(value, {&plan_.files.back().part}) &&
                   plan_.files.back().part < plan_.parts;
        } else if (word == "cut") {
            return takeCut(value);
        } else if (word == "empty") {
            plan_.mayBeEmpty.push_back(full(value));
        } else {
            return false;
        }
        return true;
    }

  private:
    [[nodiscard]] std::string full(std::string_view path) const { return normalPath(path, base_); }

    bool takeTextLine(char mark, std::string_view line) {
        if (plan_.texts.empty()) {
            return false;
        }
        std::string &text = mark == '-' ? plan_.texts.back().before : plan_.texts.back().after;
        text += mark == mark_ ? "\n" : "";
        text += line;
        mark_ = mark;
        return true;
    }

    bool takeCut(std::string_view value) {
        if (plan_.texts.empty()) {
            return false;
        }
        ChangePlan::Text &text = plan_.texts.back();
        const std::size_t last = text.cuts.empty() ? 0 : text.cuts.back().end;
        Cut &cut = text.cuts.emplace_back();
        return readNumbers(value, {&cut.part, &cut.begin, &cut.end}) && cut.part < plan_.parts &&
               last <= cut.begin && cut.begin <= cut.end && cut.end <= text.after.size();
    }

    ChangePlan &plan_;
    const std::string &base_;
    ChangePlan::Path *path_ = nullptr; ///< the entry that a line "to" completes
    char mark_ = 0;                    ///< of the line before
};

} // namespace

std::string ChangePlan::Text::with(const std::vector<bool> &chosen) const {
    std::string text;
    std::size_t at = 0;
    for (const Cut &cut : cuts) {
        if (chosen[cut.part]) {
            text.append(after, at, cut.begin - at);
            at = cut.end;
        }
    }
    return text.append(after, at);
}

std::string ChangePlan::text(const std::string &base) const {
    std::string text(firstLine);
    text += '\n';
    const auto add = [&](std::string_view word, std::string_view path) {
        if (!path.empty()) {
            text.append(word) += ' ' + relativePath(path, base) + '\n';
        }
    };
    if (!command.empty()) {
        text += "command " + command + '\n';
    }
    if (removes) {
        text += "removes " + std::to_string(parts) + '\n';
    }
    for (const auto &[word, paths] : {std::pair("tool", &toolSteps), std::pair("directory", &directories)}) {
        for (const Path &path : *paths) {
            add(word, path.from);
            add("to", path.to);
        }
    }
    for (const File &file : files) {
        add("file", file.from);
        add("to", file.to);
        text += file.directory ? "with " + std::to_string(*file.directory) + '\n' : "";
        text += file.part == 0 ? "" : "part " + std::to_string(file.part) + '\n';
    }
    for (const Text &entry : texts) {
        add(entry.own ? "own" : "text", entry.from);
        add("to", entry.to);
        addText(text, entry);
    }
    for (const std::string &directory : mayBeEmpty) {
        add("empty", directory);
    }
    return text + "end\n";
}

bool ChangePlan::parse(std::string_view text, const std::string &base) {
    *this = {};
    Reading reading(*this, base);
    std::size_t at = 0;
    const auto next = [&] {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string_view line = text.substr(at, end - at);
        at = end + 1;
        return line;
    };
    if (next() != firstLine) {
        return false;
    }
    while (at < text.size()) {
        const std::string_view line = next();
        if (line == "end") {
            return at >= text.size();
        }
        if (!reading.take(line)) {
            return false;
        }
    }
    return false;
}

} // namespace orchard
