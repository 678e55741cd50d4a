#include "CM/CMSupport/provider/StatusProvider.h"

#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SccQuery.h"

namespace {

class BoundProvider : public StatusProvider {
  public:
    pvContextStruct *contextOf(IUnit &unit) override {
        pvContextStruct *context = nullptr;
        SCCConnectToCMRepository().getSccContext(context, &unit);
        return context;
    }
    void queryAndSetStatus(CMUnitList &units, void *context) override {
        SccQuery::queryAndSetStatus(units, context);
    }
};

} // namespace

StatusProvider &statusProvider() {
    static BoundProvider provider;
    return provider;
}
