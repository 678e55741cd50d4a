#include "apps/orchard-cm/commands/Commands.h"

#include "apps/orchard-cm/model/Session.h"
#include "orchard/change/Recovery.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class RecoverCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("PROJECT", project_, "The project; by default that of -p or of the current directory");
        auto *const finish = app.add_flag("--finish", finish_, "Do what is left of the change");
        app.add_flag("--undo", undo_, "Take the change back, as long as the CM tool has done nothing")
            ->excludes(finish);
        app.footer("A move, rename or delete that was interrupted leaves the file PROJECT.orp.change. Without an\n"
                   "option, the command shows it and changes nothing. The next command that changes the project\n"
                   "finishes the change if a file has moved or is gone already, and else takes it back.");
    }

    ExitCode run(Context &context) override {
        if (!project_.empty()) {
            context.session.nameProject(project_);
        }
        const std::string path = context.session.projectFile();
        const orchard::UnfinishedChange change = orchard::unfinishedChange(path);
        if (change.file.empty()) {
            if (orchard::projectFileAt(path).empty()) {
                throw Failure(ExitCode::projectUnread, "there is no project '" + path + "'");
            }
            context.output.result({{"unfinished", nullptr}},
                                  [](std::ostream &out) { out << "Nothing is unfinished.\n"; });
            return ExitCode::done;
        }
        return finish_ || undo_ ? recover(context, path) : show(context, change);
    }

  private:
    static ExitCode show(Context &context, const orchard::UnfinishedChange &change) {
        const char *const next = change.wouldFinish ? "finish" : "undo";
        if (!change.problems.empty()) {
            throw Failure(ExitCode::failed, change.problems.front().message());
        }
        context.output.result(
            {{"unfinished",
              {{"command", change.command}, {"file", change.file}, {"tool", change.byTool}, {"next", next}}}},
            [&](std::ostream &out) {
                out << "Unfinished: " << (change.command.empty() ? change.file : change.command) << '\n'
                    << (change.wouldFinish ? "It has begun: --finish does what is left of it.\n"
                                           : "No file has moved or is gone: --undo takes it back.\n");
            });
        return ExitCode::done;
    }

    ExitCode recover(Context &context, const std::string &path) const {
        const ProjectHold held = context.session.holdUnfinished();
        const orchard::Recovered recovered =
            orchard::recover(path, finish_ ? orchard::Recover::finish : orchard::Recover::undo);
        const bool failed = recovered.outcome == orchard::Recovered::Outcome::failed;
        for (const auto &problem : recovered.problems) {
            context.output.message(failed ? Output::Kind::error : Output::Kind::warning, problem.message());
        }
        if (failed) {
            throw Failure(ExitCode::failed, std::string("the change could not be ") +
                                                (finish_ ? "finished" : "taken back") +
                                                "; it is still unfinished");
        }
        const bool isFinished = recovered.outcome == orchard::Recovered::Outcome::finished;
        context.output.result(
            {{"unfinished", nullptr},
             {"recovered", {{"command", recovered.command}, {"outcome", isFinished ? "finished" : "undone"}}}},
            [&](std::ostream &out) {
                out << (isFinished ? "Finished: " : "Undone: ") << recovered.command << '\n';
            });
        return ExitCode::done;
    }

    std::string project_;
    bool finish_ = false;
    bool undo_ = false;
};

} // namespace

std::unique_ptr<Command> makeRecoverCommand() { return std::make_unique<RecoverCommand>(); }

} // namespace orchard_cm
