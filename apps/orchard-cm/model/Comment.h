// The comment of a check in: from the command line, from a file, or from the user's editor.
#pragma once

#include "apps/orchard-cm/commands/Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

class CommentOptions {
  public:
    /// --log and --log-file.
    void declare(CLI::App &app);

    /// The comment. Without one on the command line the editor is run on the terminal, with `names` in its remarks
    /// as those that are to be `done` ("checked in"). Throws a Failure where there is no comment, or one that the
    /// tool's set refuses (property RefusedInLog) or whose text would not arrive as it stands.
    [[nodiscard]] std::string required(Context &context, std::string_view done,
                                       const std::vector<std::string> &names) const;
    /// The same, but the empty text where none is given.
    [[nodiscard]] std::string optional(Context &context) const;

  private:
    [[nodiscard]] std::optional<std::string> given() const;

    std::optional<std::string> text_;
    std::string file_;
};

} // namespace orchard_cm
