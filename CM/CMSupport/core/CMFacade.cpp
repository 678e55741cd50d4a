// CMFacade: the members that run no operation.
#include "CM/CMSupport/core/CMFacade.h"

#include "CM/CMSupport/core/CMOutputer.h"

#include <unordered_set>

CMFacade::SaveCallback CMFacade::_saveCallbackFunc = nullptr;
CMFacade::ATMCallback CMFacade::_ATMCallbackFunc = nullptr;
CMainFrame *CMFacade::_ATMCallbackFuncParameter = nullptr;
CMFacade::ATMCallback CMFacade::_afterATMCallbackFunc = nullptr;
CMainFrame *CMFacade::_afterATMCallbackFuncParameter = nullptr;

std::ostream *CMFacade::_outStream = nullptr;

CMFacade::SaveCallback &CMFacade::saveCallbackFunc() { return _saveCallbackFunc; }
CMFacade::ATMCallback &CMFacade::ATMCallbackFunc() { return _ATMCallbackFunc; }
CMainFrame *&CMFacade::ATMCallbackFuncParameter() { return _ATMCallbackFuncParameter; }
CMFacade::ATMCallback &CMFacade::afterATMCallbackFunc() { return _afterATMCallbackFunc; }
CMainFrame *&CMFacade::afterATMCallbackFuncParameter() { return _afterATMCallbackFuncParameter; }
std::ostream *&CMFacade::outStream() { return getMainCMOutputer()(); }

void CMFacade::DoCmDialog() {}

void CMFacade::removeDuplicatesFromItemList(CMUnitList &units) {
    CMUnitList unique(10);
    std::unordered_set<const IUnit *> seen;
    for (IUnit *const unit : units) {
        if (unit != nullptr && seen.insert(unit).second) {
            unique.AddTail(unit);
        }
    }
    units.RemoveAll();
    units.AddTail(unique);
}
