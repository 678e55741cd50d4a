#include "apps/orchard-cm/toolcheck/SetCheck.h"

#include "CM/platform/CString.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "apps/orchard-cm/toolcheck/KnownKeys.h"
#include "orchard/text/PatternCheck.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace orchard_cm {

namespace {

bool same(std::string_view left, std::string_view right) {
    return CString(std::string(left)).CompareNoCase(std::string(right)) == 0;
}

std::string lower(std::string_view text) { return CString(std::string(text)).MakeLower().str(); }

/// The names of all variables in all values, in small letters.
std::set<std::string> variablesIn(const std::vector<SetEntry> &entries) {
    const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
    std::set<std::string> names;
    for (const SetEntry &entry : entries) {
        const std::string &value = entry.value;
        for (auto at = value.find('$'); at != std::string::npos; at = value.find('$', at + 1)) {
            std::size_t begin = at + 1;
            begin += begin < value.size() && value[begin] == '{' ? 1U : 0U;
            std::size_t end = begin;
            while (end < value.size() && isPart(value[end])) {
                ++end;
            }
            names.insert(lower(std::string_view(value).substr(begin, end - begin)));
        }
    }
    return names;
}

std::string choiceFault(const KnownKey &key, const std::string &value) {
    std::string list;
    for (std::string_view rest = key.choices;;) {
        const auto end = std::min(rest.find(';'), rest.size());
        const auto choice = rest.substr(0, end);
        if (same(choice, value)) {
            return {};
        }
        list += (list.empty() ? "" : ", ") + (choice.empty() ? "nothing" : "'" + std::string(choice) + "'");
        if (end == rest.size()) {
            return "'" + value + "' is none of its values: " + list;
        }
        rest.remove_prefix(end + 1);
    }
}

std::string patternFault(const KnownKey &key, const std::string &value) {
    if (value.empty()) {
        return {};
    }
    const orchard::PatternFacts facts = orchard::examinePattern(value);
    if (!facts.mistake.empty()) {
        return "it is no valid pattern: " + facts.mistake + ", at character " +
               std::to_string(facts.position.value_or(0) + 1) + " of " + value;
    }
    if (key.kind == KeyKind::patternWithGroup && facts.groups == 0) {
        return "it has no group: put parentheses around what is wanted of the match";
    }
    // A field of a record may be empty; what tells errors, or parts records, must not match just anything.
    if (key.kind == KeyKind::pattern && facts.matchesEmptyText) {
        return "it matches the empty text, and so anything";
    }
    return {};
}

std::string valueFault(const KnownKey &key, const std::string &value) {
    switch (key.kind) {
    case KeyKind::pattern:
    case KeyKind::patternWithGroup:
        return patternFault(key, value);
    case KeyKind::truth:
        return std::ranges::any_of(std::initializer_list<const char *>{"true", "false", "yes", "no", "1", "0", ""},
                                   [&](const char *truth) { return same(truth, value); })
                   ? ""
                   : "'" + value + "' is neither true nor false, and counts as false";
    case KeyKind::number:
        return value.find_first_not_of("0123456789") == std::string::npos
                   ? ""
                   : "'" + value + "' is no whole number, and counts as 0 or as the number that it begins with";
    case KeyKind::choice:
        return choiceFault(key, value);
    case KeyKind::command:
    case KeyKind::optionalCommand:
    case KeyKind::rawCommand:
    case KeyKind::text:
        break;
    }
    return {};
}

void checkMissing(const std::vector<SetEntry> &entries, std::vector<Finding> &findings) {
    const auto isThere = [&](std::string_view key) { return entryOf(entries, key) != nullptr; };
    const auto holdsText = [&](std::string_view key) {
        const SetEntry *const entry = entryOf(entries, key);
        return entry != nullptr && !entry->value.empty();
    };
    const auto miss = [&](std::string_view key, const char *text) {
        findings.push_back({std::string(key), text, {}});
    };
    for (const KnownKey &key : knownKeys()) {
        if (key.kind == KeyKind::command && !isThere(key.name)) {
            miss(key.name, "the command is missing; where the tool can't do it, say so with an empty one");
        }
    }
    if (isThere("ConnectToCMRepository") && !isThere("PostConnectToCMRepository")) {
        miss("PostConnectToCMRepository", "it is missing, so that no connect succeeds; it may be empty");
    }
    for (const auto *const key : {"ReadOnly", "ReadWrite"}) {
        if (!isThere(key)) {
            miss(key, "it is missing, so that $mode stands for nothing; it may be empty");
        }
    }
    if (!holdsText("OperationErrorPattern")) {
        miss("OperationErrorPattern", "without it a failure that the tool only prints is not seen");
    }
    for (const auto *const key : {"MultiRecordDelimiter", "ListArchiveItsWorkingFile"}) {
        if (holdsText("ListArchive") && !holdsText(key)) {
            miss(key, "without it the listing of the archive is empty");
        }
    }
    for (const auto *const key : {"RefusedInLog", "RefusedInLabel"}) {
        if (!isThere(key)) {
            miss(key, "it is missing; the program refuses all characters that have a meaning to a shell");
        }
    }
    if (holdsText("CheckOutCheckInDirectoryOnceDuringAddToArchive") &&
        lower(entryOf(entries, "CheckOutCheckInDirectoryOnceDuringAddToArchive")->value) == "true" &&
        !holdsText("AddMember_WithoutCheckOutCheckInDirectory")) {
        miss("AddMember_WithoutCheckOutCheckInDirectory",
             "without it nothing is added in this set's way of adding");
    }
}

/// The last ")" of a template closes its conditional; without one the text is taken as it stands.
std::string conditionalFault(const std::string &value) {
    const auto open = value.find('(');
    const auto question = open == std::string::npos ? open : value.find('?', open);
    return question != std::string::npos && value.find(')', question) == std::string::npos
               ? "it holds a \"(\" and a \"?\" without a \")\" behind them: this is no conditional, and reaches "
                 "the tool as it stands"
               : std::string();
}

void checkUnread(const SetEntry &entry, const std::set<std::string> &variables, std::vector<Finding> &findings) {
    if (variables.contains(lower(entry.key))) {
        return;
    }
    Suggester suggester(entry.key);
    std::ranges::for_each(knownKeys(), [&](const KnownKey &key) { suggester.offer(key.name); });
    const auto meant = suggester.best(1);
    findings.push_back({entry.key,
                        "nothing reads it, and no template names it" +
                            (meant.empty() ? std::string() : "; did you mean '" + meant.front() + "'?"),
                        entry.place});
}

} // namespace

const SetEntry *entryOf(const std::vector<SetEntry> &entries, std::string_view key) {
    const auto found = std::ranges::find_if(entries, [&](const SetEntry &entry) { return same(entry.key, key); });
    return found == entries.end() ? nullptr : &*found;
}

std::string faultOfValue(std::string_view key, const std::string &value) {
    const KnownKey *const known = knownKey(key);
    return known == nullptr ? std::string() : valueFault(*known, value);
}

std::vector<Finding> checkSet(const std::vector<SetEntry> &entries) {
    std::vector<Finding> findings;
    checkMissing(entries, findings);
    const auto variables = variablesIn(entries);
    for (const SetEntry &entry : entries) {
        const KnownKey *const key = knownKey(entry.key);
        const bool isTemplate =
            key == nullptr || key->kind == KeyKind::command || key->kind == KeyKind::optionalCommand;
        if (auto fault = isTemplate ? conditionalFault(entry.value) : std::string(); !fault.empty()) {
            findings.push_back({entry.key, std::move(fault), entry.place});
        }
        if (key == nullptr) {
            checkUnread(entry, variables, findings);
        } else if (auto fault = valueFault(*key, entry.value); !fault.empty()) {
            findings.push_back({entry.key, std::move(fault), entry.place});
        }
    }
    return findings;
}

bool standsInQuotes(std::string_view command, std::string_view text) {
    // A command in parentheses or backquotes begins to quote anew, also within double quotes. What each such
    // command stands in is kept: its quote, and the character that ends it.
    struct Level {
        char quote = '\0';
        char end = '\0';
    };
    std::vector<Level> levels(1);
    for (std::size_t at = 0; at < command.size(); ++at) {
        Level &level = levels.back();
        const bool isBare = level.quote == '\0';
        if (isBare && !text.empty() && command.substr(at).starts_with(text)) {
            return false;
        }
        const char c = command[at];
        if (level.quote == '\'') {
            level.quote = c == '\'' ? '\0' : '\'';
        } else if (c == '\\') {
            ++at;
        } else if (isBare && c == level.end && levels.size() > 1) {
            levels.pop_back();
        } else if (c == '`' || (isBare && c == '(')) {
            levels.push_back({'\0', c == '`' ? '`' : ')'});
        } else if (c == '$' && command.substr(at).starts_with("$(")) {
            levels.push_back({'\0', ')'});
            ++at;
        } else if (c == '"') {
            level.quote = isBare ? '"' : '\0';
        } else if (isBare && c == '\'') {
            level.quote = c;
        }
    }
    return true;
}

} // namespace orchard_cm
