#include "apps/orchard-cm/options/Parser.h"

#include "apps/orchard-cm/base/Suggest.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <optional>

#ifndef ORCHARD_CM_VERSION
#define ORCHARD_CM_VERSION "0"
#endif

namespace orchard_cm {

namespace {

void declareGlobal(CLI::App &app, GlobalOptions &options) {
    app.add_option("-p,--project", options.project,
                   "The project file (.orp); may be left out where the current directory holds one")
        ->type_name("PROJECT");
    app.add_flag("--json", options.json, "Write results and errors as JSON, one object a command");
    auto *const answers = app.add_option_group("Answers to questions");
    answers->add_flag_callback(
        "--yes", [&options] { options.answer = Answer::yes; }, "Answer Yes to each question");
    answers->add_flag_callback(
        "--no", [&options] { options.answer = Answer::no; }, "Answer No to each question");
    answers->add_flag_callback(
        "--yes-to-all", [&options] { options.answer = Answer::yesToAll; },
        "Answer the first question with Yes to all");
    answers->require_option(0, 1);
    app.add_flag("--trace", options.trace, "Write the debug trace to the CM output window");
    app.add_option("--log", options.logFile, "Append what the operations log to FILE")->type_name("FILE");
    app.set_version_flag("--version", std::string("orchard-cm " ORCHARD_CM_VERSION));
}

/// The first word that names no command although one is due, for a suggestion.
std::optional<std::string> unknownCommand(const std::vector<std::string> &words,
                                          std::span<const CommandEntry> commands) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string &word = words[i];
        if (word == "-p" || word == "--project" || word == "--log") {
            ++i;
        } else if (!word.starts_with('-')) {
            if (std::ranges::find(commands, word, &CommandEntry::name) == commands.end()) {
                return word;
            }
            return {};
        }
    }
    return {};
}

[[noreturn]] void failUsage(const CLI::ParseError &error, const std::vector<std::string> &words,
                            std::span<const CommandEntry> commands, bool batch) {
    const char *const hint = batch
                                 ? "A line of a batch holds one command with its options, as on the command line."
                                 : "Run 'orchard-cm --help' or 'orchard-cm COMMAND --help' for what can be given.";
    if (const auto unknown = unknownCommand(words, commands)) {
        Suggester suggester(*unknown);
        std::ranges::for_each(commands, [&](const CommandEntry &entry) { suggester.offer(entry.name); });
        throw Failure(ExitCode::usage, "there is no command '" + *unknown + "'" + (batch ? " in a batch" : ""),
                      hint)
            .meaning(suggester.best());
    }
    const auto outside = std::ranges::find_if(commands, [&](const CommandEntry &entry) {
        return batch && !entry.inBatch && !words.empty() && words.front() == entry.name;
    });
    if (outside != commands.end()) {
        throw Failure(ExitCode::usage, "'" + std::string(outside->name) + "' can't stand in a batch", hint);
    }
    throw Failure(ExitCode::usage, error.what(), hint);
}

Invocation parse(const std::vector<std::string> &words, std::span<const CommandEntry> commands, bool batch) {
    Invocation invocation;
    CLI::App app("Works on the units of an Orchard model under configuration management.", "orchard-cm");
    app.fallthrough();
    app.require_subcommand(1);
    app.get_formatter()->column_width(34);
    if (!batch) {
        declareGlobal(app, invocation.options);
    }
    std::map<const CLI::App *, std::pair<std::string, std::unique_ptr<Command>>> made;
    for (const CommandEntry &entry : commands) {
        if (batch && !entry.inBatch) {
            continue;
        }
        auto *const sub = app.add_subcommand(std::string(entry.name), std::string(entry.summary));
        auto command = entry.make();
        command->declare(*sub);
        made.emplace(sub, std::pair(std::string(entry.name), std::move(command)));
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::CallForHelp &) {
        const CLI::App *shown = &app;
        while (!shown->get_subcommands().empty()) {
            shown = shown->get_subcommands().front();
        }
        invocation.text = shown->help();
        return invocation;
    } catch (const CLI::CallForVersion &version) {
        invocation.text = std::string(version.what()) + "\n";
        return invocation;
    } catch (const CLI::ParseError &error) {
        failUsage(error, words, commands, batch);
    }
    auto &[name, command] = made.at(app.get_subcommands().front());
    invocation.name = std::move(name);
    invocation.command = std::move(command);
    return invocation;
}

} // namespace

Invocation parseCommandLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands) {
    return parse(words, commands, false);
}

Invocation parseBatchLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands) {
    return parse(words, commands, true);
}

bool wantsJson(const std::vector<std::string> &words) {
    return std::find(words.begin(), std::find(words.begin(), words.end(), "--"), "--json") !=
           std::find(words.begin(), words.end(), "--");
}

} // namespace orchard_cm
