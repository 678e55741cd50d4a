#include "CM/CMSupport/provider/MoveMemberSCC.h"

#include "CM/CMSupport/provider/RouteMissing.h"

int MoveMemberSCC::movePackageContent(IUnit *, CMUnitList &, const CString &, const CString &, CMArgumentList &,
                                      CMDiagnosticList &, bool) {
    return provider::routeMissing();
}
