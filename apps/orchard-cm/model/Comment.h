// Reads the comment of a check in from the command line, from a file, or from the user's editor.
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

class CommentOptions {
  public:
    /// Declares --log and --log-file.
    void declare(CLI::App &app);

    /// Returns the comment. If the command line has none, the editor is run on the terminal; its remarks say that
    /// the units `names` are to be `done` ("checked in"). Throws a Failure if there is no comment, if the tool's
    /// set refuses it (property RefusedInLog), or if its text would not arrive unchanged.
    [[nodiscard]] std::string required(Context &context, std::string_view done,
                                       const std::vector<std::string> &names) const;
    /// Returns the comment, or an empty text if the command line has none.
    [[nodiscard]] std::string optional(Context &context) const;

  private:
    [[nodiscard]] std::optional<std::string> given() const;

    std::optional<std::string> text_;
    std::string file_;
};

} // namespace orchard_cm
