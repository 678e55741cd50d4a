#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/checkout/ArchiveNames.h"
#include "apps/orchard-cm/checkout/Checkout.h"
#include "apps/orchard-cm/checkout/LabelCheck.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class CheckoutCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--lock", options_.lock, "Check out to work on: with a lock, writable");
        app.add_option("--label", options_.label, "Check out the version with this label or number")
            ->type_name("LABEL");
        app.add_flag("--recursive", options_.recursive, "With all units below");
        app.add_flag("--archive", archive_,
                     "Check files out of the archive, also those that the model does not know");
        app.add_option("UNIT", items_, "Units by name, path in the model or file; with --archive files")
            ->required();
        app.footer("Ends with 0 only if every one was checked out and no error was shown.");
    }

    ExitCode run(Context &context) override {
        if (const std::string fault = labelFault(options_.label); !fault.empty()) {
            throw Failure(ExitCode::usage, "the label can't be given to a tool: " + fault);
        }
        const IProject &project = context.session.project();
        const CheckoutReport report =
            archive_ ? checkOutFromArchive(context, archiveNames(project, items_, options_.recursive), options_)
                     : checkOutUnits(context, chosenUnits(project), options_);
        Json items = Json::array();
        for (const auto &item : report.items) {
            items.push_back(toJson(item));
        }
        context.output.result({{"items", std::move(items)}}, [&](std::ostream &out) {
            for (const auto &item : report.items) {
                write(out, item);
            }
        });
        // What the archive brought in new is listed in its owner's file, which has to be saved for it to stay.
        context.session.saveIfModified();
        return report.good ? ExitCode::done : ExitCode::failed;
    }

  private:
    [[nodiscard]] std::vector<IUnit *> chosenUnits(const IProject &project) const {
        auto units = unitsNamed(project, items_);
        return options_.recursive ? withUnitsBelow(project, units) : units;
    }

    CheckoutOptions options_;
    bool archive_ = false;
    std::vector<std::string> items_;
};

} // namespace

std::unique_ptr<Command> makeCheckoutCommand() { return std::make_unique<CheckoutCommand>(); }

} // namespace orchard_cm
