#include "apps/orchard-cm/checkout/CheckoutResult.h"

#include <array>
#include <filesystem>

namespace orchard_cm {

namespace {

constexpr std::array outcomeNames{"checked out", "skipped", "failed"};

const char *nameOf(CheckoutResult::Outcome outcome) { return outcomeNames.at(static_cast<std::size_t>(outcome)); }

Json stateToJson(const ItemState &state) {
    Json json = {{"exists", state.file.exists}, {"writable", state.file.writable}, {"inModel", state.inModel}};
    for (const auto &[key, value] : {std::pair("state", &state.state), std::pair("version", &state.version),
                                     std::pair("locker", &state.locker)}) {
        if (!value->empty()) {
            json[key] = *value;
        }
    }
    return json;
}

/// ", LABEL BEFORE -> AFTER", or ", LABEL AFTER" where nothing changed.
std::string change(const std::string &label, const std::string &before, const std::string &after) {
    if (after.empty()) {
        return {};
    }
    return ", " + label + (before.empty() || before == after ? "" : before + " -> ") + after;
}

/// Whether the command names the file: the name stands in it, and not as the end of a longer one.
bool names(const std::string &command, const std::string &file) {
    const auto name = std::filesystem::path(file).filename().string();
    for (auto at = command.find(name); at != std::string::npos; at = command.find(name, at + 1)) {
        if (at == 0 || std::string_view("/\\ \t\"'=").find(command[at - 1]) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

Json toJson(const CheckoutResult &result) {
    const ItemState &before = result.before;
    const ItemState &after = result.after;
    Json json = {{"unit", result.name},
                 {"file", result.file},
                 {"outcome", nameOf(result.outcome)},
                 {"fileChanged", !before.file.sameContent(after.file)},
                 {"versionChanged", before.version != after.version},
                 {"modeChanged", before.state != after.state},
                 {"newObject", before.object != after.object},
                 {"before", stateToJson(before)},
                 {"after", stateToJson(after)}};
    if (!result.reason.empty()) {
        json["reason"] = result.reason;
    }
    return json;
}

void write(std::ostream &out, const CheckoutResult &result) {
    const ItemState &before = result.before;
    const ItemState &after = result.after;
    out << result.name << ": " << nameOf(result.outcome);
    if (!result.reason.empty()) {
        out << ": " << result.reason;
    }
    if (result.outcome == CheckoutResult::Outcome::done) {
        out << (before.file.sameContent(after.file) ? ", file unchanged" : ", file changed")
            << change("version ", before.version, after.version) << change("", before.state, after.state);
        if (!after.locker.empty()) {
            out << ", locked by " << after.locker;
        }
        if (!before.inModel && after.inModel) {
            out << ", loaded into the model";
        } else if (after.inModel && !after.isEmbedded && !before.file.sameContent(after.file)) {
            out << ", reloaded";
        }
    } else if (!before.file.sameContent(after.file)) {
        out << (after.file.exists ? " (the file has changed)" : " (the file is gone)");
    }
    out << '\n';
}

std::vector<ItemRun> itemRuns(const std::vector<std::string> &files, const Journal &journal) {
    std::vector<ItemRun> items(files.size());
    std::size_t next = 0;
    bool namesFiles = true; // a template need not hold the file's name: then the order alone tells
    for (const JournalRun &run : journal.runs()) {
        std::size_t found = next;
        while (namesFiles && found < files.size() && !names(run.command, files[found])) {
            ++found;
        }
        if (found == files.size()) {
            namesFiles = false;
            found = next;
        }
        if (found < files.size()) {
            items[found].run = &run;
            next = found + 1;
        }
    }
    next = 0;
    for (const std::string &question : journal.questions()) {
        for (std::size_t i = next; i < files.size(); ++i) {
            if (question.find(files[i]) != std::string::npos) {
                items[i].asked = true;
                next = i + 1;
                break;
            }
        }
    }
    return items;
}

void judge(CheckoutResult &result, const ItemRun &itemRun, bool lock) {
    using Outcome = CheckoutResult::Outcome;
    result.outcome = Outcome::failed;
    if (itemRun.run == nullptr) {
        if (itemRun.asked) {
            result.outcome = Outcome::skipped;
            result.reason = "the file is writable, and the answer was No";
        }
        return;
    }
    result.reason = failureOf(*itemRun.run);
    if (!result.reason.empty()) {
        return;
    }
    if (!result.after.file.exists) {
        result.reason = "the tool left no file";
    } else if (lock && !result.after.file.writable) {
        result.reason = "the file is still read-only";
    } else if (result.before.inModel && !result.after.inModel) {
        result.reason = "the unit could not be reloaded, and is no longer in the model";
    } else {
        result.outcome = Outcome::done;
    }
}

} // namespace orchard_cm
