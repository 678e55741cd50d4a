#include "apps/orchard-cm/operation/ItemResult.h"

namespace orchard_cm {

namespace {

const char *nameOf(ItemResult::Outcome outcome, const Wording &wording) {
    switch (outcome) {
    case ItemResult::Outcome::done:
        return wording.done;
    case ItemResult::Outcome::passedOver:
        return "passed over";
    case ItemResult::Outcome::skipped:
        return "skipped";
    case ItemResult::Outcome::notBegun:
        return "not begun";
    case ItemResult::Outcome::failed:
        break;
    }
    return "failed";
}

Json stateToJson(const ItemState &state) {
    Json json = {{"exists", state.exists}, {"writable", state.writable}, {"inModel", state.inModel}};
    for (const auto &[key, value] : {std::pair("state", &state.state), std::pair("version", &state.version),
                                     std::pair("locker", &state.locker)}) {
        if (!value->empty()) {
            json[key] = *value;
        }
    }
    return json;
}

/// Returns ", LABEL BEFORE -> AFTER", or ", LABEL AFTER" if nothing has changed.
std::string change(const std::string &label, const std::string &before, const std::string &after) {
    if (after.empty()) {
        return {};
    }
    return ", " + label + (before.empty() || before == after ? "" : before + " -> ") + after;
}

void writeContent(std::ostream &out, const ItemResult &result) {
    if (!result.before.inModel && result.after.inModel) {
        out << ", loaded into the model";
    } else if (result.reloaded) {
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
                 {"fileChanged", result.fileChanged},
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
        if (wording.showsContent) {
            out << (result.fileChanged ? ", file changed" : ", file unchanged");
        }
        if (wording.showsState) {
            out << change("version ", before.version, after.version) << change("", before.state, after.state);
        }
        if (wording.showsState && !after.locker.empty()) {
            out << ", locked by " << after.locker;
        }
        if (wording.showsContent) {
            writeContent(out, result);
        }
        out << change("now ", {}, result.newName) << change("file now ", {}, result.newFile);
    } else if (result.fileChanged) {
        out << (after.exists ? " (the file has changed)" : " (the file is gone)");
    }
    out << '\n';
}

void write(std::ostream &out, const std::vector<ItemResult> &results, const Wording &wording) {
    const ItemResult *first = nullptr;
    std::size_t notBegun = 0;
    for (const ItemResult &result : results) {
        if (result.outcome != ItemResult::Outcome::notBegun) {
            write(out, result, wording);
        } else if (notBegun++ == 0) {
            first = &result;
        }
    }
    if (first != nullptr) {
        out << first->name;
        if (notBegun > 1) {
            out << " and " << notBegun - 1 << (notBegun > 2 ? " others" : " other");
        }
        out << ": not begun; run the same command again to do the rest\n";
    }
}

std::string unmet(const Expectation &expected, const ItemResult &result) {
    if (expected.file && !result.after.exists) {
        return "the tool left no file";
    }
    if (expected.writable && !result.after.writable) {
        return "the file is still read-only";
    }
    if (expected.unit && result.before.inModel && !result.after.inModel) {
        return "the unit could not be reloaded, and is no longer in the model";
    }
    return {};
}

} // namespace orchard_cm
