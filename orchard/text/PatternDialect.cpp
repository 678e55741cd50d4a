#include "orchard/text/PatternDialect.h"

#include <algorithm>

namespace orchard {
namespace {

constexpr std::size_t open = std::string_view::npos; ///< "does not close"

/// Finds where a bracket expression closes, for each position where one of its tokens may begin.
class BracketEnds {
  public:
    explicit BracketEnds(std::string_view pattern) : pattern_(pattern) {}

    /// The position of the bracket that closes the expression opened at `start`, with backslashes as escapes.
    std::size_t closing(std::size_t start) {
        if (ends_.empty()) {
            fill();
        }
        return ends_[std::min(firstToken(start), pattern_.size())];
    }

    /// The same with the backslash as an ordinary character.
    [[nodiscard]] std::size_t closingOfPlain(std::size_t start) const {
        std::size_t at = firstMember(start);
        if (at < pattern_.size() && pattern_[at] == ']') {
            ++at;
        }
        return pattern_.find(']', at);
    }

  private:
    [[nodiscard]] std::size_t firstMember(std::size_t start) const {
        return start + 1 < pattern_.size() && pattern_[start + 1] == '^' ? start + 2 : start + 1;
    }
    /// A closing bracket in first position is a member of the class.
    [[nodiscard]] std::size_t firstToken(std::size_t start) const {
        const std::size_t at = firstMember(start);
        return at < pattern_.size() && pattern_[at] == ']' ? at + 1 : at;
    }

    void fill() {
        const std::size_t size = pattern_.size();
        ends_.assign(size + 1, open);
        std::size_t quoteEnd = open; // the nearest "\E" at or after the position
        for (std::size_t at = size; at-- > 0;) {
            const char next = at + 1 < size ? pattern_[at + 1] : '\0';
            if (pattern_[at] == '\\' && next == 'E') {
                quoteEnd = at;
            }
            std::size_t follows = at + 1;
            if (pattern_[at] == ']') {
                ends_[at] = at;
                continue;
            }
            if (pattern_[at] == '\\') {
                if (next == 'Q') {
                    follows = quoteEnd == open ? size : quoteEnd + 2;
                } else {
                    follows = at + (next == 'c' ? 3 : 2);
                }
            } else if (pattern_[at] == '[' && (next == ':' || next == '.' || next == '=')) {
                follows = endOfNamedClass(at, next);
            }
            ends_[at] = ends_[std::min(follows, size)];
        }
    }

    /// After "[:name:]" and the like, or after the bracket alone if it opens no such name.
    [[nodiscard]] std::size_t endOfNamedClass(std::size_t at, char kind) const {
        for (std::size_t i = at + 2; i + 1 < pattern_.size(); ++i) {
            const char next = pattern_[i + 1];
            if (pattern_[i] == '\\' && (next == ']' || next == '\\')) {
                ++i;
            } else if ((pattern_[i] == '[' && next == kind) || pattern_[i] == ']') {
                break;
            } else if (pattern_[i] == kind && next == ']') {
                return i + 2;
            }
        }
        return at + 1;
    }

    std::string_view pattern_;
    std::vector<std::size_t> ends_;
};

/// Returns the length in bytes of the escape sequence at the start of `rest`, outside a bracket expression.
std::size_t lengthOfEscape(std::string_view rest) {
    if (rest.starts_with("\\Q")) {
        const std::size_t end = rest.find("\\E", 2);
        return end == std::string_view::npos ? rest.size() : end + 2;
    }
    return std::min<std::size_t>(rest.starts_with("\\c") ? 3 : 2, rest.size());
}

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

std::size_t TranslatedPattern::originalPosition(std::size_t position) const {
    const auto before = std::lower_bound(inserted.begin(), inserted.end(), position) - inserted.begin();
    return position - static_cast<std::size_t>(before);
}

TranslatedPattern translatePattern(std::string_view pattern) {
    TranslatedPattern result;
    result.text.reserve(pattern.size() + 2);
    BracketEnds ends(pattern);
    std::size_t at = 0;
    const auto copy = [&](std::size_t count) {
        result.text.append(pattern.substr(at, count));
        at += std::min(count, pattern.size() - at);
    };
    while (at < pattern.size()) {
        const std::string_view rest = pattern.substr(at);
        if (rest.front() == '\\') {
            copy(lengthOfEscape(rest));
        } else if (rest.starts_with("(?#")) {
            const std::size_t end = rest.find(')');
            copy(end == std::string_view::npos ? rest.size() : end + 1);
        } else if (rest.front() != '[') {
            copy(1);
        } else if (const std::size_t end = ends.closing(at); end != open) {
            copy(end + 1 - at);
        } else if (const std::size_t plainEnd = ends.closingOfPlain(at); plainEnd != open) {
            while (at <= plainEnd) {
                if (pattern[at] == '\\') {
                    result.inserted.push_back(result.text.size());
                    result.text += '\\';
                }
                copy(1);
            }
        } else {
            copy(rest.size()); // open in both cases: the engine reports where
        }
    }
    return result;
}

std::optional<std::string> literalText(std::string_view pattern) {
    if (pattern.empty()) {
        return std::nullopt;
    }
    std::string text;
    text.reserve(pattern.size());
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const char c = pattern[at];
        const char next = at + 1 < pattern.size() ? pattern[at + 1] : '\0';
        if (c == '\\') {
            // A letter or digit after a backslash has a special meaning.
            const auto byte = static_cast<unsigned char>(next);
            if (isWordCharacter(next) || byte <= ' ' || byte >= 0x7f) {
                return std::nullopt;
            }
            text += next;
            ++at;
        } else if (pattern.substr(at, 3) == "[\\]" && pattern.find(']', at + 3) == std::string_view::npos) {
            text += '\\';
            at += 2;
        } else if (std::string_view("^$.[]|()?*+{}\0", 14).find(c) != std::string_view::npos) {
            return std::nullopt;
        } else {
            text += c;
        }
    }
    return text;
}

} // namespace orchard
