// If shells differ or in doubt, the answer is that a shell is needed, which is slower and never wrong.
#include "CM/platform/PlainWords.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

using namespace std::string_view_literals;

// Unquoted, each of these ends a command, redirects, quotes or expands in one of the shells that "sh" may
// be.
constexpr auto specialUnquoted = "\n|&;<>()$`\\*?[{}"sv;
// A backslash in double quotes escapes these; before any other character it is literal.
constexpr auto escapedInDoubleQuotes = "$`\"\\\n"sv;

// Names that a shell handles itself: reserved words, builtins that act on the shell, and builtins whose program of
// the same name may write something else (echo, printf, pwd, test, time, kill).
constexpr auto shellsOwn = std::to_array<std::string_view>({
    "!",       ".",        ":",       "[",        "[[",        "]]",        "alias",    "autoload",  "bg",
    "bind",    "break",    "builtin", "bye",      "caller",    "case",      "cd",       "chdir",     "command",
    "compgen", "complete", "compopt", "continue", "coproc",    "declare",   "dirs",     "disown",    "do",
    "done",    "echo",     "elif",    "else",     "enable",    "esac",      "eval",     "exec",      "exit",
    "export",  "fc",       "fg",      "fi",       "float",     "for",       "function", "functions", "getopts",
    "hash",    "help",     "history", "if",       "in",        "integer",   "jobs",     "kill",      "let",
    "local",   "login",    "logout",  "mapfile",  "newgrp",    "nocorrect", "noglob",   "popd",      "print",
    "printf",  "pushd",    "pwd",     "read",     "readarray", "readonly",  "repeat",   "return",    "select",
    "set",     "shift",    "shopt",   "source",   "stop",      "suspend",   "test",     "then",      "time",
    "times",   "trap",     "type",    "typeset",  "ulimit",    "umask",     "unalias",  "unset",     "until",
    "wait",    "whence",   "while",   "{",        "}",
});
static_assert(std::ranges::is_sorted(shellsOwn));

/// Reads the words of a command. Each step returns false if only a shell can continue.
class WordReader {
  public:
    explicit WordReader(std::string_view command) : rest_(command) {}

    bool read() {
        while (!rest_.empty()) {
            const char next = take();
            const bool understood = next == ' ' || next == '\t' ? endWord()
                                    : next == '\''              ? singleQuoted()
                                    : next == '"'               ? doubleQuoted()
                                                                : unquoted(next);
            if (!understood) {
                return false;
            }
        }
        return endWord() && !words_.empty() && startsWithProgram();
    }

    std::vector<std::string> takeWords() { return std::move(words_); }

  private:
    char take() {
        const char next = rest_.front();
        rest_.remove_prefix(1);
        return next;
    }

    bool endWord() {
        if (begun_) {
            words_.push_back(std::move(word_));
            word_.clear();
            begun_ = false;
        }
        return true;
    }

    bool singleQuoted() {
        const auto close = rest_.find('\'');
        if (close == std::string_view::npos) {
            return false;
        }
        word_ += rest_.substr(0, close);
        begun_ = true;
        rest_.remove_prefix(close + 1);
        return true;
    }

    bool doubleQuoted() {
        begun_ = true;
        while (!rest_.empty()) {
            const char next = take();
            if (next == '"') {
                return true;
            }
            const bool escapes = next == '\\' && (rest_.empty() || escapedInDoubleQuotes.find(rest_.front()) !=
                                                                       std::string_view::npos);
            if (next == '$' || next == '`' || escapes) {
                return false;
            }
            word_ += next;
        }
        return false;
    }

    bool unquoted(char next) {
        const bool comment = next == '#' && !begun_;
        // A tilde is a home directory at the start of a word, and in some shells also after '=' and ':'.
        const bool home = next == '~' && (word_.empty() || word_.back() == '=' || word_.back() == ':');
        const bool assignment = next == '=' && words_.empty();
        if (comment || home || assignment || specialUnquoted.find(next) != std::string_view::npos) {
            return false;
        }
        word_ += next;
        begun_ = true;
        return true;
    }

    [[nodiscard]] bool startsWithProgram() const {
        const std::string &name = words_.front();
        if (name == "true" || name == "false") {
            return words_.size() == 1; // the builtins ignore arguments, the programs don't
        }
        // "%1" is a job; the shell reports an empty name.
        return !name.empty() && name.front() != '%' &&
               !std::ranges::binary_search(shellsOwn, std::string_view(name));
    }

    std::string_view rest_;
    std::string word_;
    bool begun_ = false; ///< the word has begun, if only with a pair of quotes
    std::vector<std::string> words_;
};

} // namespace

std::optional<std::vector<std::string>> plainWords(std::string_view command) {
    if (command.find('\0') != std::string_view::npos) {
        return std::nullopt; // neither a program nor a shell can get all of it
    }
    WordReader reader(command);
    if (!reader.read()) {
        return std::nullopt;
    }
    return reader.takeWords();
}

} // namespace platform
