#include "apps/orchard-cm/base/Output.h"

#include <array>
#include <utility>

namespace orchard_cm {

namespace {

constexpr std::array kindNames{"information", "warning", "error", "question"};

std::string suggestionText(const std::vector<std::string> &names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + ("'" + names[i] + "'");
    }
    return "Did you mean " + text + "?";
}

} // namespace

Output::Output(Form form, std::ostream &results, std::ostream &reports, bool reportsOnTerminal)
    : form_(form), results_(results), status_(reports, reportsOnTerminal) {}

void Output::begin(std::string_view command, const std::optional<Place> &place) {
    Record &record = open_.emplace_back();
    record.command = command;
    record.place = place;
}

void Output::end(ExitCode code) {
    status_.clear();
    if (open_.empty()) {
        return;
    }
    const Record record = std::move(open_.back());
    open_.pop_back();
    if (isJson()) {
        write(record, code);
    }
    results_ << std::flush;
}

void Output::write(const Record &record, ExitCode code) {
    Json object = {{"command", record.command}, {"ok", code == ExitCode::done}, {"exit", static_cast<int>(code)}};
    if (record.place) {
        object["file"] = record.place->file;
        object["line"] = record.place->line;
    }
    object.update(record.fields);
    if (!record.messages.empty()) {
        object["messages"] = record.messages;
    }
    if (!window_.view().empty()) {
        object["window"] = window_.str();
        window_.str({});
    }
    if (!record.error.is_null()) {
        object["error"] = record.error;
    }
    // A tool may write any bytes: invalid UTF-8 is written as replacement characters.
    results_ << object.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

void Output::result(const Json &fields, const std::function<void(std::ostream &)> &write) {
    status_.clear();
    if (!isJson()) {
        write(results_);
        results_ << std::flush;
    } else if (!open_.empty()) {
        open_.back().fields.update(fields);
    }
}

void Output::field(const std::string &name, Json value) {
    if (!open_.empty()) {
        open_.back().fields[name] = std::move(value);
    }
}

void Output::message(Kind kind, const std::string &text) {
    errors_ += kind == Kind::error ? 1U : 0U;
    const char *const name = kindNames.at(static_cast<std::size_t>(kind));
    if (isJson() && !open_.empty()) {
        open_.back().messages.push_back({{"kind", name}, {"text", text}});
        return;
    }
    std::ostream &out = status_.stream();
    out << prefix() << (kind == Kind::information ? "" : std::string(name) + ": ") << text << '\n' << std::flush;
}

void Output::failure(const Failure &failure) {
    if (isJson() && !open_.empty()) {
        Json error = {{"message", failure.what()}};
        if (!failure.hint().empty()) {
            error["hint"] = failure.hint();
        }
        if (!failure.suggestions().empty()) {
            error["suggestions"] = failure.suggestions();
        }
        open_.back().error = std::move(error);
        return;
    }
    std::ostream &out = status_.stream();
    out << prefix() << failure.what() << '\n';
    if (!failure.suggestions().empty()) {
        out << suggestionText(failure.suggestions()) << '\n';
    }
    if (!failure.hint().empty()) {
        out << failure.hint() << '\n';
    }
    out << std::flush;
}

std::ostream &Output::window() { return isJson() ? window_ : status_.stream(); }

std::string Output::prefix() const {
    std::string text = "orchard-cm: ";
    if (!open_.empty() && open_.back().place) {
        text += open_.back().place->file + ":" + std::to_string(open_.back().place->line) + ": ";
    }
    return text;
}

} // namespace orchard_cm
