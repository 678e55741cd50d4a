#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

/// Locks or unlocks: the two differ in the entry that they call and in the file mode that they expect.
class LockCommand : public Command {
  public:
    explicit LockCommand(bool lock) : lock_(lock) {}

    void declare(CLI::App &app) override {
        options_.declareLabel(app, lock_ ? "Lock this version" : "Unlock this version");
        options_.declareUnits(app);
        if (!lock_) {
            app.footer(
                "Most tools release a lock by undoing the check out, which loses changes in the file; the unit\n"
                "is then read again.");
        }
    }

    ExitCode run(Context &context) override {
        static_cast<void>(context.session.project());
        requireCommand(lock_ ? IPN::CMLockItem : IPN::CMUnLockItem);
        const Operation operation{
            .wording = {lock_ ? "locked" : "unlocked", false},
            .expected = {.writable = lock_},
            .arguments = [this](TemplateArguments &arguments) { arguments.addLabel(options_.label()); },
            .reload = Reload::changed,
            .changes = Changes::units};
        return options_.run(context, operation, lock_ ? CMFacade::LockItem : CMFacade::UnLockItem);
    }

  private:
    OperationOptions options_;
    bool lock_;
};

} // namespace

std::unique_ptr<Command> makeLockCommand() { return std::make_unique<LockCommand>(true); }
std::unique_ptr<Command> makeUnlockCommand() { return std::make_unique<LockCommand>(false); }

} // namespace orchard_cm
