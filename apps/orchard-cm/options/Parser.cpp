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
                   "The project file (.orp); not needed if the current directory contains exactly one")
        ->type_name("PROJECT");
    app.add_flag("--json", options.json, "Write results and errors as JSON, one object for each command");
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
    app.add_option("--log", options.logFile, "Append the log of the operations to FILE")->type_name("FILE");
    constexpr unsigned longestWait = 1'000'000;
    app.add_option("--wait", options.wait,
                   "How long to wait for another program that is changing the project (30 by default)")
        ->type_name("SECONDS")
        ->check(CLI::Range(0U, longestWait));
    app.set_version_flag("--version", std::string("orchard-cm " ORCHARD_CM_VERSION));
}

/// Returns the first word that should be a command but is not, for a suggestion.
std::optional<std::string> unknownCommand(const std::vector<std::string> &words,
                                          std::span<const CommandEntry> commands) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string &word = words[i];
        if (word == "-p" || word == "--project" || word == "--log" || word == "--wait") {
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

/// Returns the command that was being parsed, or its action if there is one.
const CLI::App &innermost(const CLI::App &app) {
    const CLI::App *shown = &app;
    while (!shown->get_subcommands().empty()) {
        shown = shown->get_subcommands().front();
    }
    return *shown;
}

/// Returns the name with its parents, such as "property get".
std::string nameOf(const CLI::App &app) {
    std::string name;
    for (const CLI::App *at = &innermost(app); at->get_parent() != nullptr; at = at->get_parent()) {
        name = at->get_name() + (name.empty() ? "" : " ") + name;
    }
    return name;
}

/// Throws for an option that the command does not have, or for a word instead of one of its actions.
[[noreturn]] void failAt(const CLI::App &at, const std::string &word, const std::string &message,
                         const char *hint) {
    Suggester suggester(word);
    for (const CLI::App *app = &at; app != nullptr; app = app->get_parent()) {
        for (const CLI::Option *const option : app->get_options()) {
            for (const auto &name : option->get_lnames()) {
                suggester.offer("--" + name);
            }
        }
    }
    for (const CLI::App *const action : at.get_subcommands([](const CLI::App *) { return true; })) {
        suggester.offer(action->get_name());
    }
    throw Failure(ExitCode::usage, message, hint).meaning(suggester.best());
}

/// Throws with a message of the program if that explains more than the parser's own.
void failKnown(const CLI::App &app, const std::vector<std::string> &words, const char *hint) {
    const CLI::App &at = innermost(app);
    std::string actions;
    for (const CLI::App *const action : at.get_subcommands([](const CLI::App *) { return true; })) {
        actions += (actions.empty() ? "" : ", ") + action->get_name();
    }
    const auto unknown = app.remaining(true);
    if (!unknown.empty() && unknown.front().starts_with("--")) {
        const std::string word = unknown.front().substr(0, unknown.front().find('='));
        failAt(at, word, "'" + nameOf(app) + "' has no option " + word, hint);
    }
    if (!unknown.empty() && unknown.front().starts_with('-') && unknown.front().size() > 1) {
        throw Failure(ExitCode::usage,
                      "'" + nameOf(app) + "' has no option " + unknown.front() +
                          "; put '--' before a value that begins with '-'",
                      hint);
    }
    if (at.get_parent() != nullptr && at.get_require_subcommand_min() > 0 && !actions.empty()) {
        const auto place = std::ranges::find(words, at.get_name());
        const auto word = std::find_if(place == words.end() ? place : place + 1, words.end(),
                                       [](const std::string &text) { return !text.starts_with('-'); });
        const std::string named = word == words.end() ? "" : "; '" + *word + "' is not one of them";
        failAt(at, word == words.end() ? "" : *word,
               "'" + at.get_name() + "' needs one of its actions: " + actions + named, hint);
    }
}

[[noreturn]] void failUsage(const CLI::App &app, const CLI::ParseError &error,
                            const std::vector<std::string> &words, std::span<const CommandEntry> commands,
                            bool batch) {
    const char *const hint =
        batch ? "A line of a batch contains one command with its options, as on the command line."
              : "Run 'orchard-cm --help' or 'orchard-cm COMMAND --help' for help.";
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
        throw Failure(ExitCode::usage, "'" + std::string(outside->name) + "' can't be used in a batch", hint);
    }
    if (app.get_subcommands().empty()) {
        std::string names;
        for (const CommandEntry &entry : commands) {
            if (entry.inBatch || !batch) {
                names += (names.empty() ? "" : ", ") + std::string(entry.name);
            }
        }
        throw Failure(ExitCode::usage, "no command is given; the commands are " + names, hint);
    }
    failKnown(app, words, hint);
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
    std::map<const CLI::App *, std::unique_ptr<Command>> made;
    for (const CommandEntry &entry : commands) {
        if (batch && !entry.inBatch) {
            continue;
        }
        auto *const sub = app.add_subcommand(std::string(entry.name), std::string(entry.summary));
        auto command = entry.make();
        command->declare(*sub);
        made.emplace(sub, std::move(command));
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::CallForHelp &) {
        invocation.text = app.help();
        return invocation;
    } catch (const CLI::CallForVersion &version) {
        invocation.text = std::string(version.what()) + "\n";
        return invocation;
    } catch (const CLI::ParseError &error) {
        failUsage(app, error, words, commands, batch);
    }
    invocation.name = nameOf(app);
    invocation.command = std::move(made.at(app.get_subcommands().front()));
    return invocation;
}

} // namespace

Invocation parseCommandLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands) {
    Invocation invocation = parse(words, commands, false);
    invocation.options.commandLine = "orchard-cm";
    for (const std::string &word : words) {
        invocation.options.commandLine += " " + word;
    }
    return invocation;
}

Invocation parseBatchLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands) {
    return parse(words, commands, true);
}

std::string commandIn(const std::vector<std::string> &words, std::span<const CommandEntry> commands) {
    const auto found = std::ranges::find_if(words, [&](const std::string &word) {
        return std::ranges::find(commands, word, &CommandEntry::name) != commands.end();
    });
    return found == words.end() ? std::string() : *found;
}

bool wantsJson(const std::vector<std::string> &words) {
    return std::find(words.begin(), std::find(words.begin(), words.end(), "--"), "--json") !=
           std::find(words.begin(), words.end(), "--");
}

} // namespace orchard_cm
