#include "apps/orchard-cm/commands/Commands.h"

#include "apps/orchard-cm/model/Tools.h"
#include "orchard/storage/NewProject.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class NewCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("PROJECT", path_, "The new project: DIR/NAME, or DIR/NAME.orp")->required();
        app.add_option("--tool", tool_, "The CM tool that the project uses (see 'orchard-cm tools')")
            ->type_name("TOOL");
        app.add_option("--units", units_, "Generate N units in nested subsystems; the same N gives the same model")
            ->type_name("N")
            ->check(CLI::Range(1, 10'000'000));
    }

    ExitCode run(Context &context) override {
        path_.erase(path_.find_last_not_of('/') + 1);
        if (path_.empty()) {
            throw Failure(ExitCode::usage, "the new project has no name", "Name it as DIR/NAME.");
        }
        if (!tool_.empty()) {
            tool_ = installedToolNamed(tool_);
        }
        const auto made = units_ > 0 ? orchard::createGeneratedProject(path_, units_, tool_)
                                     : orchard::createSampleProject(path_, tool_);
        if (!made) {
            throw Failure(ExitCode::failed, made.error);
        }
        context.output.result({{"project", made.projectFile}},
                              [&](std::ostream &out) { out << "Made " << made.projectFile << '\n'; });
        return ExitCode::done;
    }

  private:
    std::string path_;
    std::string tool_;
    std::size_t units_ = 0;
};

} // namespace

std::unique_ptr<Command> makeNewCommand() { return std::make_unique<NewCommand>(); }

} // namespace orchard_cm
