#include "apps/orchard-cm/base/Words.h"

#include <utility>

namespace orchard_cm {

namespace {

/// Reads one line from left to right.
class Splitter {
  public:
    explicit Splitter(std::string_view line) : line_(line) {}

    std::vector<std::string> words() {
        while (at_ < line_.size()) {
            const char next = line_[at_];
            if (next == ' ' || next == '\t') {
                endWord();
                ++at_;
            } else if (next == '#' && !inWord_) {
                break;
            } else if (next == '\'' || next == '"') {
                takeQuoted(next);
            } else if (next == '\\') {
                takeEscaped();
            } else {
                add(next);
                ++at_;
            }
        }
        endWord();
        return std::move(words_);
    }

  private:
    void add(char character) {
        inWord_ = true;
        word_ += character;
    }
    void endWord() {
        if (inWord_) {
            words_.push_back(std::exchange(word_, {}));
            inWord_ = false;
        }
    }
    void takeEscaped() {
        if (at_ + 1 == line_.size()) {
            throw WordsError(at_ + 1, "a backslash with nothing after it");
        }
        add(line_[at_ + 1]);
        at_ += 2;
    }
    void takeQuoted(char quote) {
        const std::size_t start = at_++;
        inWord_ = true; // an empty pair of quotes is also a word
        while (at_ < line_.size() && line_[at_] != quote) {
            if (quote == '"' && line_[at_] == '\\' && at_ + 1 < line_.size() &&
                (line_[at_ + 1] == '"' || line_[at_ + 1] == '\\')) {
                ++at_;
            }
            add(line_[at_++]);
        }
        if (at_ == line_.size()) {
            throw WordsError(start + 1, std::string("the quote ") + quote + " that opens here is not closed");
        }
        ++at_;
    }

    std::string_view line_;
    std::size_t at_ = 0;
    bool inWord_ = false;
    std::string word_;
    std::vector<std::string> words_;
};

} // namespace

std::vector<std::string> splitWords(std::string_view line) {
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return Splitter(line).words();
}

} // namespace orchard_cm
