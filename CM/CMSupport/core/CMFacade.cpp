// Implements the members of CMFacade that run no operation.
#include "CM/CMSupport/core/CMFacade.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/platform/PlaceHash.h"

#include <unordered_set>

CMFacade::SaveCallback CMFacade::_saveCallbackFunc = nullptr;
CMFacade::ATMCallback CMFacade::_ATMCallbackFunc = nullptr;
CMainFrame *CMFacade::_ATMCallbackFuncParameter = nullptr;
CMFacade::ATMCallback CMFacade::_afterATMCallbackFunc = nullptr;
CMainFrame *CMFacade::_afterATMCallbackFuncParameter = nullptr;
CMOutcomeObserver *CMFacade::outcomeObserver_ = nullptr;

std::ostream *CMFacade::_outStream = nullptr;

CMFacade::SaveCallback &CMFacade::saveCallbackFunc() { return _saveCallbackFunc; }
CMFacade::ATMCallback &CMFacade::ATMCallbackFunc() { return _ATMCallbackFunc; }
CMainFrame *&CMFacade::ATMCallbackFuncParameter() { return _ATMCallbackFuncParameter; }
CMFacade::ATMCallback &CMFacade::afterATMCallbackFunc() { return _afterATMCallbackFunc; }
CMainFrame *&CMFacade::afterATMCallbackFuncParameter() { return _afterATMCallbackFuncParameter; }
CMOutcomeObserver *&CMFacade::outcomeObserver() { return outcomeObserver_; }
std::ostream *&CMFacade::outStream() { return getMainCMOutputer()(); }

void CMFacade::DoCmDialog() {}

void CMFacade::removeDuplicatesFromItemList(CMUnitList &units) {
    std::unordered_set<const IUnit *, PlaceHash<const IUnit *>> seen;
    seen.reserve(static_cast<std::size_t>(units.GetCount()));
    for (auto position = units.GetHeadPosition(); position;) {
        const auto here = position;
        const IUnit *const unit = units.GetNext(position);
        if (unit == nullptr || !seen.insert(unit).second) {
            units.RemoveAt(here);
        }
    }
}
