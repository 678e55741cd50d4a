#include "CM/CMSupport/command/UpdatingRun.h"

#include "CM/CMSupport/command/ArchiveSelection.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/core/HostCallbacks.h"

#include <utility>

namespace command {

namespace {

class UpdatingRun : public CommandRun<IUnit> {
  public:
    using CommandRun<IUnit>::CommandRun;

  protected:
    void prepare(IUnit &unit) override { selectArchive(unit); }

    void followUp(IUnit &unit, CMORYHandler *guard) override {
        CommandRun::followUp(unit, guard);
        log("Updating CM Header for unit " + unit.getFullFileName());
        updateHeader(unit);
        log("Updating Mode for unit " + unit.getFullFileName());
        updateMode(unit);
    }
};

} // namespace

int updateUnits(CMOperation &operation, CommandTexts texts, SaveFirst save, const CMUnitList &units,
                CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!isToolConfigured(operation, false, error, diags)) {
        return 0;
    }
    if (save == SaveFirst::yes && !units.IsEmpty()) {
        core::saveModel();
    }
    UpdatingRun run(std::move(texts), args, error);
    run.workAll(units);
    return run.result();
}

} // namespace command
