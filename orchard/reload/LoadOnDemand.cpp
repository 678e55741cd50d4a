#include "CM/host/LoadOnDemandManager.h"

#include "CM/host/LogTrace.h"
#include "orchard/model/UnitElement.h"
#include "orchard/reload/ReloadReport.h"
#include "orchard/storage/UnitReplacement.h"

#include <algorithm>
#include <iterator>

namespace {

using namespace orchard;

class LoadOnDemand final : public LoadOnDemandManager {
  public:
    int completeLoadScopeWithDialog(IDObject *object, const CString &text, int /*flag*/) override {
        Element *const root = Element::of(object);
        if (root == nullptr) {
            return 0;
        }
        LogTrace::Log(LogTrace::Log::cm).Min("../orchard/reload", __LINE__, text);
        Problems problems;
        std::vector<UnitElement *> stubs;
        visitSubtree<Element>(*root, [&](Element &element) {
            if (UnitElement *const unit = element.asUnit(); unit != nullptr && unit->is(UnitElement::stub)) {
                stubs.push_back(unit);
            }
        });
        // A stub keeps its object, and nothing below it could be lost.
        for (UnitElement *const stub : stubs) {
            Replacement replacement = reread(*stub);
            std::ranges::move(replacement.problems, std::back_inserter(problems));
        }
        reportReloadProblems(problems);
        return problems.empty() ? 1 : 0;
    }
};

} // namespace

LoadOnDemandManager *LoadOnDemandManager::instance() {
    static LoadOnDemand manager;
    return &manager;
}
