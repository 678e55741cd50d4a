#include "orchard/text/PatternReport.h"

#include <algorithm>
#include <iostream>
#include <set>
#include <utility>

namespace orchard {
namespace {

struct Hooks {
    PatternReporter reporter;
    PatternOriginFinder finder;
    std::set<std::pair<std::string, std::string>> reported;
};

Hooks &hooks() {
    static Hooks theHooks;
    return theHooks;
}

constexpr std::size_t longestShown = 200;    // bytes of a pattern in a message
constexpr std::size_t mostRemembered = 1000; // distinct problems, so that many patterns can't fill the memory

/// Returns the pattern on one line, without control characters, and the column of `position` in it.
std::pair<std::string, std::size_t> shown(std::string_view pattern, std::size_t position) {
    const std::size_t first = position > longestShown / 2 ? position - longestShown / 2 : 0;
    std::string line(pattern.substr(std::min(first, pattern.size()), longestShown));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return {line, position - first};
}

} // namespace

std::string PatternProblem::message() const {
    const auto [line, column] = shown(pattern, position.value_or(0));
    std::string text =
        origin.empty() ? "A pattern can't be used: " : "The pattern in " + origin + " can't be used: ";
    text += reason;
    if (position) {
        text += ", at character " + std::to_string(*position + 1);
    }
    text += ".\n    " + line + "\n";
    if (position) {
        text += "    " + std::string(column, ' ') + "^\n";
    }
    return text + "It counts as a pattern that matches nothing.";
}

void setPatternReporter(PatternReporter reporter) { hooks().reporter = std::move(reporter); }
void setPatternOriginFinder(PatternOriginFinder finder) { hooks().finder = std::move(finder); }

void reportPatternProblem(PatternProblem problem) {
    Hooks &all = hooks();
    if (all.reported.size() >= mostRemembered || !all.reported.emplace(problem.pattern, problem.reason).second) {
        return;
    }
    if (problem.origin.empty() && all.finder) {
        problem.origin = all.finder(problem.pattern);
    }
    if (all.reporter) {
        all.reporter(problem);
    } else {
        std::cerr << problem.message() << '\n';
    }
}

} // namespace orchard
