#include "apps/orchard-cm/toolcheck/SetCheck.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/Variable.h"
#include "CM/host/IPN.h"
#include "CM/platform/CString.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "apps/orchard-cm/model/RefusedCharacters.h"
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

/// Returns the names of all variables in all values, in small letters.
std::set<std::string> variablesIn(const std::vector<SetEntry> &entries) {
    std::set<std::string> names;
    for (const SetEntry &entry : entries) {
        for (auto found = findVariable(entry.value); found;
             found = findVariable(entry.value, found->at + found->text.str().size())) {
            names.insert(lower(found->name));
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
            return "'" + value + "' is not one of its values: " + list;
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
        return "it is not a valid pattern: " + facts.mistake + ", at character " +
               std::to_string(facts.position.value_or(0) + 1) + " of " + value;
    }
    if (key.kind == KeyKind::patternWithGroup && facts.groups == 0) {
        return "it has no group: put parentheses around the wanted part of the match";
    }
    // A field of a record may be empty, but a pattern that detects errors or separates records must not match
    // anything.
    if (key.kind == KeyKind::pattern && facts.matchesEmptyText) {
        return "it matches even an empty text, and therefore everything";
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
                   : "'" + value + "' is not an integer, and counts as 0 or as the number that it begins with";
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
            miss(key.name, "the command is missing; set it to '' if the tool can't do it");
        }
    }
    if (isThere(IPN::CMConnectToCMRepository) && !isThere(keys::postConnect)) {
        miss(keys::postConnect, "it is missing, so no connect succeeds; it must exist, but may be empty");
    }
    for (const auto *const key : {&IPN::CMReadOnly, &IPN::CMReadWrite}) {
        if (!isThere(*key)) {
            miss(*key, "it is missing, so $mode is empty; it must exist, but may be empty");
        }
    }
    if (!holdsText(keys::errorPattern)) {
        miss(keys::errorPattern, "without it, failures that the tool only prints are not detected");
    }
    for (const auto *const key : {&IPN::CMMultiRecordDelimiter, &IPN::CMListArchiveItsWorkingFile}) {
        if (holdsText(IPN::CMListArchive) && !holdsText(*key)) {
            miss(*key, "without it the listing of the archive is empty");
        }
    }
    for (const auto *const key : {refusedInLogKey, refusedInLabelKey}) {
        if (!isThere(key)) {
            miss(key, "it is missing; the program refuses all characters with a special meaning to a shell");
        }
    }
    if (holdsText(keys::addOncePerDirectory) &&
        lower(entryOf(entries, keys::addOncePerDirectory)->value) == "true" && !holdsText(keys::addInDirectory)) {
        miss(keys::addInDirectory, "without it, adding by directory adds nothing");
    }
}

std::string conditionalFault(const std::string &value) {
    const auto open = value.find('(');
    if (open == value.npos || value.find('?', open) == value.npos) {
        return {};
    }
    int start = 0;
    int end = 0;
    CString ifPart;
    CString thenPart;
    CString elsePart;
    CString unused;
    return CMProperty::ExtractCondition(value, start, end, ifPart, thenPart, elsePart, unused) != 0
               ? std::string()
               : "it contains a \"(\" and a \"?\", but no closing \")\": this is not a conditional, and reaches "
                 "the tool unchanged";
}

/// The first ">" of a command begins the name of the file that gets the output, up to the end of the command.
std::string redirectionFault(const std::string &value) {
    const auto at = value.find('>');
    if (at == value.npos) {
        return {};
    }
    const bool hasNumber = at > 0 && std::isdigit(static_cast<unsigned char>(value[at - 1])) != 0;
    const bool isCompound = at + 1 < value.size() && (value[at + 1] == '&' || value[at + 1] == '>');
    if (!hasNumber && !isCompound) {
        return {};
    }
    return "the first \">\" ends the command, and the rest, \"" + value.substr(at + 1) +
           "\", is the name of the file for its output" +
           (hasNumber ? "; the number before it is an argument of the tool" : "") +
           "; put any other redirection into a script";
}

void checkUnread(const SetEntry &entry, const std::set<std::string> &variables, std::vector<Finding> &findings) {
    if (variables.contains(lower(entry.key))) {
        return;
    }
    Suggester suggester(entry.key);
    std::ranges::for_each(knownKeys(), [&](const KnownKey &key) { suggester.offer(key.name); });
    const auto meant = suggester.best(1);
    findings.push_back({entry.key,
                        "no operation reads it, and no template uses it" +
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
        const bool reachesCommand = isTemplate || key->kind == KeyKind::rawCommand;
        if (auto fault = reachesCommand ? redirectionFault(entry.value) : std::string(); !fault.empty()) {
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

bool isInQuotes(std::string_view command, std::string_view text) {
    // A command in parentheses or backquotes begins with fresh quoting, also within double quotes. Each level
    // remembers its quote and the character that ends it.
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
