#include "CM/CMSupport/provider/DeleteMemberSCC.h"

#include "CM/CMSupport/provider/RouteMissing.h"

int DeleteMemberSCC::DeleteDirectory(const CString &, CMArgumentList &, CMDiagnosticList &) {
    return provider::routeMissing();
}
