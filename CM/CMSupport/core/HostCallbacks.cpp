#include "CM/CMSupport/core/HostCallbacks.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/IPN.h"

namespace core {

bool saveModel() {
    const CMFacade::SaveCallback save = CMFacade::saveCallbackFunc();
    if (save == nullptr) {
        return false;
    }
    save();
    OutcomeReport().sendAs(CMOutcome::Kind::modelSaved);
    return true;
}

bool isSaveOnCheckOutWanted() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMSaveOnCheckOut, nullptr, IProperty::inherited, false);
    return property != nullptr && property->getBool();
}

void saveBeforeRecursiveCheckOut() {
    if (isSaveOnCheckOutWanted() && CMProperty::saveOnCheckout(-1) != 0 && saveModel()) {
        CMProperty::saveOnCheckout(0);
    }
}

void openReloads() { CMFacade::ATMCallbackFunc()(CMFacade::ATMCallbackFuncParameter()); }

void closeReloads() { CMFacade::afterATMCallbackFunc()(CMFacade::afterATMCallbackFuncParameter()); }

} // namespace core
