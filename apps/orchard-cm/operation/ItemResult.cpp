#include "apps/orchard-cm/operation/ItemResult.h"

namespace orchard_cm {

namespace {

const char *nameOf(ItemResult::Outcome outcome, const Wording &wording) {
    switch (outcome) {
    case ItemResult::Outcome::done:
        return wording.done;
    case ItemResult::Outcome::skipped:
        return "skipped";
    case ItemResult::Outcome::failed:
        break;
    }
    return "failed";
}

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

void writeContent(std::ostream &out, const ItemState &before, const ItemState &after) {
    if (!before.inModel && after.inModel) {
        out << ", loaded into the model";
    } else if (after.inModel && !after.isEmbedded && !before.file.sameContent(after.file)) {
        out << ", reloaded";
    }
}

} // namespace

Json toJson(const ItemResult &result, const Wording &wording) {
    const ItemState &before = result.before;
    const ItemState &after = result.after;
    Json json = {{"unit", result.name},
                 {"file", result.file},
                 {"outcome", nameOf(result.outcome, wording)},
                 {"fileChanged", !before.file.sameContent(after.file)},
                 {"versionChanged", before.version != after.version},
                 {"modeChanged", before.state != after.state},
                 {"newObject", before.object != after.object},
                 {"before", stateToJson(before)},
                 {"after", stateToJson(after)}};
    for (const auto &[key, value] : {std::pair("newUnit", &result.newName), std::pair("newFile", &result.newFile),
                                     std::pair("reason", &result.reason), std::pair("output", &result.output)}) {
        if (!value->empty()) {
            json[key] = *value;
        }
    }
    return json;
}

void write(std::ostream &out, const ItemResult &result, const Wording &wording) {
    const ItemState &before = result.before;
    const ItemState &after = result.after;
    out << result.name << ": " << nameOf(result.outcome, wording);
    if (!result.reason.empty()) {
        out << ": " << result.reason;
    }
    if (result.outcome == ItemResult::Outcome::done) {
        if (wording.tellsContent) {
            out << (before.file.sameContent(after.file) ? ", file unchanged" : ", file changed");
        }
        if (wording.tellsState) {
            out << change("version ", before.version, after.version) << change("", before.state, after.state);
        }
        if (wording.tellsState && !after.locker.empty()) {
            out << ", locked by " << after.locker;
        }
        if (wording.tellsContent) {
            writeContent(out, before, after);
        }
        out << change("now ", {}, result.newName) << change("file now ", {}, result.newFile);
    } else if (!before.file.sameContent(after.file)) {
        out << (after.file.exists ? " (the file has changed)" : " (the file is gone)");
    }
    out << '\n';
}

void judge(ItemResult &result, const ItemRun &itemRun, const Expectation &expected) {
    using Outcome = ItemResult::Outcome;
    result.outcome = Outcome::failed;
    if (itemRun.runs.empty()) {
        if (itemRun.asked) {
            result.outcome = Outcome::skipped;
            result.reason = "the file is writable, and the answer was No";
        }
        return;
    }
    for (const JournalRun *const run : itemRun.runs) {
        if (result.reason = failureOf(*run); !result.reason.empty()) {
            return;
        }
    }
    if (expected.file && !result.after.file.exists) {
        result.reason = "the tool left no file";
    } else if (expected.writable && !result.after.file.writable) {
        result.reason = "the file is still read-only";
    } else if (expected.unit && result.before.inModel && !result.after.inModel) {
        result.reason = "the unit could not be reloaded, and is no longer in the model";
    } else {
        result.outcome = Outcome::done;
    }
}

} // namespace orchard_cm
