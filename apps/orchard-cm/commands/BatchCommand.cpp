#include "apps/orchard-cm/commands/Commands.h"

#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/base/Words.h"
#include "apps/orchard-cm/commands/AllCommands.h"
#include "apps/orchard-cm/commands/Run.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/options/Parser.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace orchard_cm {

namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

/// Returns the words of one line. Throws a Failure if it can't be split.
std::vector<std::string> wordsOf(const std::string &line) {
    if (const auto nul = line.find('\0'); nul != std::string::npos) {
        throw Failure(ExitCode::usage, "column " + std::to_string(nul + 1) + ": a NUL, which no text may contain");
    }
    try {
        return splitWords(line);
    } catch (const WordsError &error) {
        throw Failure(ExitCode::usage, "column " + std::to_string(error.column()) + ": " + error.what());
    }
}

class BatchCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("FILE", file_, "The commands, one on each line; by default or with '-', standard input");
        app.add_flag("--keep-going", keepGoing_, "Continue with the next line after a failure");
        app.footer("Words are quoted as in a shell, but nothing is expanded; '#' begins a comment. Without\n"
                   "--keep-going the first line that fails ends the batch. The exit status is that of the first\n"
                   "line that failed.");
    }

    ExitCode run(Context &context) override {
        static_cast<void>(context.session.project()); // a project that can't be read fails before the first line
        if (file_.empty() || file_ == "-") {
            file_ = "standard input";
            return runLines(context, std::cin);
        }
        std::ifstream stream(file_);
        if (!stream || std::filesystem::is_directory(file_)) {
            throw Failure(ExitCode::usage, "the batch file '" + file_ +
                                               "' can't be read: " + std::strerror(stream ? EISDIR : errno));
        }
        return runLines(context, stream);
    }

  private:
    ExitCode runLines(Context &context, std::istream &lines) {
        std::string line;
        ExitCode code = ExitCode::done;
        std::size_t commands = 0;
        Json failed = Json::array();
        for (std::size_t number = 1; !isInterrupted() && std::getline(lines, line); ++number) {
            if (number == 1 && line.starts_with(byteOrderMark)) {
                line.erase(0, byteOrderMark.size());
            }
            const auto result = runLine(context, line, number);
            commands += result ? 1U : 0U;
            if (result.value_or(ExitCode::done) != ExitCode::done) {
                failed.push_back(number);
                code = code == ExitCode::done ? *result : code;
                if (!keepGoing_) {
                    break;
                }
            }
        }
        if (lines.bad()) {
            throw Failure(ExitCode::failed, "'" + file_ + "' could not be read to its end");
        }
        context.output.result({{"commands", commands}, {"failedLines", failed}}, [](std::ostream &) {});
        if (!failed.empty() && !context.output.isJson()) {
            context.output.message(Output::Kind::information, summary(commands, failed));
        }
        return code;
    }

    std::optional<ExitCode> runLine(Context &context, const std::string &line, std::size_t number) {
        Invocation invocation;
        std::string name;
        const Place place{file_, number};
        try {
            const auto words = wordsOf(line);
            if (words.empty()) {
                return {};
            }
            name = commandIn(words, allCommands());
            invocation = parseBatchLine(words, allCommands());
        } catch (const Failure &failure) {
            return runRecorded(context.output, name.empty() ? "batch" : name, place,
                               [&]() -> ExitCode { throw failure; });
        }
        return runRecorded(context.output, invocation.command == nullptr ? name : invocation.name, place, [&] {
            if (invocation.command == nullptr) {
                context.output.result({{"text", invocation.text}},
                                      [&](std::ostream &out) { out << invocation.text; });
                return ExitCode::done;
            }
            return invocation.command->run(context);
        });
    }

    [[nodiscard]] std::string summary(std::size_t commands, const Json &failed) const {
        std::string list;
        for (const auto &number : failed) {
            list += (list.empty() ? "" : ", ") + std::to_string(number.get<std::size_t>());
        }
        return std::to_string(failed.size()) + " of " + std::to_string(commands) + " commands failed (line" +
               (failed.size() > 1 ? "s " : " ") + list + ")" +
               (keepGoing_ ? "" : "; the lines after it did not run");
    }

    std::string file_;
    bool keepGoing_ = false;
};

} // namespace

std::unique_ptr<Command> makeBatchCommand() { return std::make_unique<BatchCommand>(); }

} // namespace orchard_cm
