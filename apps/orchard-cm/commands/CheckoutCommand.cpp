#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/questions/WritableFileQuestion.h"
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
        return options_.run(
            context, checkOut, recursive ? CMFacade::RecCheckOut : CMFacade::CheckOut,
            [&](CMArchiveItemList &items, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                CMArchiveItemList wanted;
                chooseWanted(items, wanted);
                return wanted.IsEmpty() ? 0
                       : recursive      ? CMFacade::RecCheckOutFromArchive(wanted, arguments, diagnostics)
                                        : CMFacade::CheckOutFromArchive(wanted, arguments, diagnostics);
            });
    }

  private:
    /// The library asks only about the files of units. A file without a unit may hold changes, too.
    static void chooseWanted(CMArchiveItemList &items, CMArchiveItemList &wanted) {
        const WritableFileQuestion question;
        for (CMArchiveItem *item : items) {
            const bool hasUnit = IUnit::getByFile(item->getFileNameForRepFiles()) != nullptr;
            if (hasUnit || question.mayOverwriteFile(item->getFullUnitFileName())) {
                wanted.AddTail(item);
            } else if (CMOutcomeObserver *const observer = CMFacade::outcomeObserver()) {
                CMOutcome outcome;
                outcome.item = item;
                outcome.file = item->getFullUnitFileName();
                outcome.kind = CMOutcome::Kind::declined;
                outcome.reason = "the file is writable, and the answer was No";
                outcome.fileExists = outcome.fileWritable = true;
                observer->report(outcome);
            }
        }
    }

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
