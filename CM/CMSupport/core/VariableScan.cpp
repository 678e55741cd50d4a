#include "CM/CMSupport/core/VariableScan.h"

namespace {

const SPString theArgumentPattern(R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)");

// Whether a byte may stand in a name. A byte of a letter beyond ASCII is let through, for the pattern to judge:
// some are the other case of an ASCII letter.
constexpr bool mayBelong(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_' ||
           static_cast<unsigned char>(character) >= 0x80;
}

// Where a variable that begins at `dollar` ends at the latest. A brace is taken on either side and no run of them,
// lest each variable of a text of braces look through all that follow.
std::size_t latestEnd(std::string_view text, std::size_t dollar) {
    auto end = dollar + 1;
    if (end < text.size() && text[end] == '{') {
        ++end;
    }
    while (end < text.size() && mayBelong(text[end])) {
        ++end;
    }
    return end < text.size() && text[end] == '}' ? end + 1 : end;
}

// How many bytes at the end of a text could begin a variable that the text behind completes.
std::size_t openEnd(std::string_view text) {
    if (text.ends_with('$')) {
        return 1;
    }
    return text.ends_with("${") ? 2 : 0;
}

} // namespace

bool VariableScan::find(SPStringList &matches) {
    for (;;) {
        const auto dollar = rest_.find('$', at_);
        if (dollar == std::string::npos) {
            matches.reset();
            return false;
        }
        passed_.append(rest_, at_, dollar - at_);
        at_ = dollar;
        const SPString candidate(rest_.substr(dollar, latestEnd(rest_, dollar) - dollar));
        if (candidate.m(theArgumentPattern, matches, "i") != 0) {
            foundLength_ = static_cast<std::size_t>(matches[0].length());
            return true;
        }
        passed_ += '$';
        ++at_;
    }
}

void VariableScan::replace(std::string_view inserted) {
    at_ += foundLength_;
    foundLength_ = 0;
    const auto open = openEnd(passed_);
    if (open == 0 && inserted.find('$') == std::string_view::npos) {
        passed_ += inserted; // no variable can begin in it
        return;
    }
    const std::string again = passed_.substr(passed_.size() - open);
    passed_.resize(passed_.size() - open);
    pushFront(inserted);
    pushFront(again);
}

void VariableScan::pushFront(std::string_view text) {
    if (text.size() > at_) {
        // As much room as there is text, so that the copies cost a constant for each byte put in.
        const auto remaining = rest_.size() - at_;
        const auto room = text.size() + remaining;
        std::string roomy(room + text.size(), '\0');
        roomy.append(rest_, at_, remaining);
        rest_ = std::move(roomy);
        at_ = room + text.size();
    }
    at_ -= text.size();
    rest_.replace(at_, text.size(), text);
}

std::string VariableScan::take() {
    passed_.append(rest_, at_);
    return std::move(passed_);
}
