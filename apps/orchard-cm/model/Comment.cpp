#include "apps/orchard-cm/model/Comment.h"

#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/base/EditedText.h"
#include "apps/orchard-cm/base/Editor.h"
#include "apps/orchard-cm/model/RefusedCharacters.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/model/Tools.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

namespace orchard_cm {

namespace {

std::string readFile(const std::string &file) {
    std::string text;
    if (file == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), {});
    } else {
        std::ifstream stream(file, std::ios::binary);
        if (!stream) {
            throw Failure(ExitCode::usage,
                          "the comment file '" + file + "' can't be read: " + std::strerror(errno));
        }
        text.assign(std::istreambuf_iterator<char>(stream), {});
        if (stream.bad()) {
            throw Failure(ExitCode::usage, "the comment file '" + file + "' could not be read to its end");
        }
    }
    return text;
}

/// Throws if the comment can't be part of a command of the tool, or would arrive as another text.
void check(const std::string &comment) {
    if (const auto fault = commentFault(comment, refusedInLog()); !fault.empty()) {
        throw Failure(ExitCode::usage, "the comment can't be given to the CM tool " + toolInUse() + ": " + fault,
                      "Write it without that character (property RefusedInLog).");
    }
    TemplateArguments arguments;
    arguments.addLog(comment);
    CString expanded;
    CString error;
    // An expansion also expands the text of a comment, so a variable or conditional in it would be replaced.
    if (CMProperty::Expand("$log", arguments.list(), expanded, error, false) == 0 ||
        expanded != CMLog(comment).substitute("log")) {
        throw Failure(ExitCode::usage,
                      "the comment can't be given to the CM tool " + toolInUse() +
                          ": it contains a variable ($name), a conditional '(... ? ...)' or a doubled backslash, "
                          "which a command template would expand");
    }
}

std::string checked(const std::string &text) {
    std::string comment = tidied(text);
    check(comment);
    return comment;
}

} // namespace

void CommentOptions::declare(CLI::App &app) {
    auto *const text = app.add_option("--log", text_, "The comment")->type_name("TEXT");
    app.add_option("--log-file", file_, "Take the comment from this file; '-' is standard input")
        ->type_name("FILE")
        ->excludes(text);
}

std::optional<std::string> CommentOptions::given() const {
    return file_.empty() ? text_ : std::optional(readFile(file_));
}

std::string CommentOptions::required(Context &context, std::string_view done,
                                     const std::vector<std::string> &names) const {
    static_cast<void>(context.session.project());
    auto text = given();
    if (!text) {
        context.output.status().clear();
        text = edit(remarksFor(done, names));
    }
    std::string comment = checked(*text);
    if (comment.empty()) {
        throw Failure(ExitCode::failed, "there is no comment, so nothing was " + std::string(done));
    }
    return comment;
}

std::string CommentOptions::optional(Context &context) const {
    static_cast<void>(context.session.project());
    const auto text = given();
    return text ? checked(*text) : std::string();
}

} // namespace orchard_cm
