#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/commands/OperationOptions.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class CheckoutCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--lock", lock_, "Lock the files and make them writable");
        options_.declareLabel(app, "Check out the version with this label or number");
        options_.declareUnitsOrFiles(app,
                                     "Check out files of the archive, even files that the model does not know");
        app.footer("Exits with 0 only if every unit or file was checked out and no error was shown.");
    }

    ExitCode run(Context &context) override {
        const bool recursive = options_.recursive();
        const Operation checkOut{
            .wording = {"checked out"},
            .expected = {.writable = lock_},
            .arguments =
                [this](TemplateArguments &arguments) {
                    arguments.addMode(lock_);
                    arguments.addLabel(options_.label());
                },
            .reload = recursive ? Reload::all : Reload::byLibrary,
            .changes = Changes::units,
            .alsoJudge =
                [this](const ItemResult &item) { return versionFault(options_.label(), item.after.version); }};
        // The recursive form on the archive asks this flag whether to save the model, and clears it after the
        // first save.
        static_cast<void>(CMProperty::saveOnCheckout(1));
        return options_.run(context, checkOut, recursive ? CMFacade::RecCheckOut : CMFacade::CheckOut,
                            recursive ? CMFacade::RecCheckOutFromArchive : CMFacade::CheckOutFromArchive);
    }

  private:
    /// A tool may return the nearest version if it does not have the requested one. A version number means that
    /// version, or one on the branch with that number.
    static std::string versionFault(const std::string &asked, const std::string &got) {
        const bool isNumber =
            asked.find('.') != std::string::npos && asked.find_first_not_of("0123456789.") == std::string::npos;
        if (!isNumber || got.empty() || got == asked || got.starts_with(asked + ".")) {
            return {};
        }
        return "there is no version " + asked + ": the tool gave " + got;
    }

    OperationOptions options_;
    bool lock_ = false;
};

} // namespace

std::unique_ptr<Command> makeCheckoutCommand() { return std::make_unique<CheckoutCommand>(); }

} // namespace orchard_cm
