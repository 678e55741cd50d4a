// Writes all output of the program. As text, results go to the standard output, and reports (messages, the CM
// output window, errors) go to the standard error. As JSON, each command writes one object on a line of its own to
// the standard output, errors included:
//   {"command": "list", "ok": true, "exit": 0, ...the command's own fields...,
//    "messages": [{"kind": "error", "text": "..."}], "window": "the CM output window's text",
//    "error": {"message": "...", "hint": "...", "suggestions": [...]}, "file": "...", "line": 3}
// Fields without content are left out; file and line appear only in a batch.
#pragma once

#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/StatusLine.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

namespace orchard_cm {

using Json = nlohmann::ordered_json;

/// The position of a command in a batch.
struct Place {
    std::string file;
    std::size_t line = 0;
};

class Output {
  public:
    enum class Form { text, json };
    enum class Kind { information, warning, error, question };

    Output(Form form, std::ostream &results, std::ostream &reports, bool reportsOnTerminal);

    /// Begins the record of a command. If a record is already open, it is suspended until the new one ends.
    void begin(std::string_view command, const std::optional<Place> &place = {});
    /// Ends the record. As JSON, writes the object.
    void end(ExitCode code);

    /// Writes the command's result: as text with `write`, as JSON with the fields of `fields`.
    void result(const Json &fields, const std::function<void(std::ostream &)> &write);
    /// Reports a message to the user.
    void message(Kind kind, const std::string &text);
    /// Reports why the command ends here.
    void failure(const Failure &failure);
    /// Adds a field to the command's JSON object; it has no counterpart in text.
    void field(const std::string &name, Json value);

    /// Returns the stream of the CM output window.
    [[nodiscard]] std::ostream &window();
    [[nodiscard]] StatusLine &status() { return status_; }
    [[nodiscard]] bool isJson() const { return form_ == Form::json; }
    /// Returns the number of error messages so far, over all records.
    [[nodiscard]] std::size_t errorCount() const { return errors_; }

  private:
    struct Record {
        std::string command;
        std::optional<Place> place;
        Json fields = Json::object();
        Json messages = Json::array();
        Json error;
    };
    [[nodiscard]] std::string prefix() const;
    void write(const Record &record, ExitCode code);

    Form form_;
    std::ostream &results_;
    StatusLine status_;
    std::ostringstream window_; // with Form::json only
    std::vector<Record> open_;
    std::size_t errors_ = 0;
};

} // namespace orchard_cm
