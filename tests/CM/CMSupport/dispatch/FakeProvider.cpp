#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include "CM/CMSupport/provider/DeleteMemberSCC.h"
#include "CM/CMSupport/provider/MoveMemberSCC.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/host/Messages.h"

#include <stdexcept>

namespace {

FakeProvider *theProvider = nullptr;

void add(FakeProvider::Call &call, const CString &text) { call.texts.push_back(text); }
void add(FakeProvider::Call &call, bool flag) { call.texts.emplace_back(flag ? "true" : "false"); }
void add(FakeProvider::Call &call, IUnit *unit) { call.addresses.push_back(unit); }
void add(FakeProvider::Call &call, const auto &list) { call.addresses.push_back(&list); }

int answer(const char *entry, const auto &...args) {
    if (theProvider == nullptr) {
        notifyUserAndAsk(FakeProvider::notice, MB_ICONHAND, 0, messageLevelDefault);
        return 0;
    }
    FakeProvider &fake = *theProvider;
    FakeProvider::Call call{entry, {}, {}};
    (add(call, args), ...);
    fake.calls.push_back(std::move(call));
    if (fake.onCall) {
        fake.onCall();
    }
    return fake.result;
}

using Units = CMUnitList;
using Items = CMArchiveItemList;
using Args = CMArgumentList;
using Diags = CMDiagnosticList;

} // namespace

FakeProvider::FakeProvider() { theProvider = this; }
FakeProvider::~FakeProvider() { theProvider = nullptr; }

FakeProvider &FakeProvider::current() {
    if (theProvider == nullptr) {
        throw std::logic_error("no fake provider lives");
    }
    return *theProvider;
}

std::vector<std::string> FakeProvider::entries() const {
    std::vector<std::string> names;
    for (const Call &call : calls) {
        names.push_back(call.entry);
    }
    return names;
}

// clang-format off
int SCCFacade::SCCConnectToArchive(Units &u, Args &a, Diags &d) { return answer("SCCConnectToArchive", u, a, d); }
int SCCFacade::SCCCheckOut(Units &u, Args &a, Diags &d) { return answer("SCCCheckOut", u, a, d); }
int SCCFacade::SCCRecCheckOut(Units &u, Args &a, Diags &d) { return answer("SCCRecCheckOut", u, a, d); }
int SCCFacade::SCCCheckOutFromArchive(Items &i, Args &a, Diags &d) { return answer("SCCCheckOutFromArchive", i, a, d); }
int SCCFacade::SCCRecCheckOutFromArchive(Items &i, Args &a, Diags &d) { return answer("SCCRecCheckOutFromArchive", i, a, d); }
int SCCFacade::SCCCheckIn(Units &u, Args &a, Diags &d) { return answer("SCCCheckIn", u, a, d); }
int SCCFacade::SCCUncheckout(Units &u, Args &a, Diags &d) { return answer("SCCUncheckout", u, a, d); }
int SCCFacade::SCCAddMember(Units &u, Args &a, Diags &d) { return answer("SCCAddMember", u, a, d); }
int SCCFacade::SCCAddDirectory(const CString &path, Args &a, Diags &d) { return answer("SCCAddDirectory", path, a, d); }
int SCCFacade::SCCMoveMember(Units &u, Args &a, Diags &d) { return answer("SCCMoveMember", u, a, d); }
int SCCFacade::SCCRenameMember(IUnit *unit, const CString &from, const CString &to, Diags &d) { return answer("SCCRenameMember", unit, from, to, d); }
int SCCFacade::SCCDeleteMember(Units &u, Args &a, Diags &d) { return answer("SCCDeleteMember", u, a, d); }
int SCCFacade::SCCFetch(Units &u, Args &a, Diags &d) { return answer("SCCFetch", u, a, d); }
int SCCFacade::SCCFetchForDiff(Units &u, Args &a, Diags &d) { return answer("SCCFetchForDiff", u, a, d); }
int SCCFacade::FetchFromArchive(Items &i, Args &a, Diags &d) { return answer("FetchFromArchive", i, a, d); }
int SCCFacade::RecFetchFromArchive(Items &i, Args &a, Diags &d) { return answer("RecFetchFromArchive", i, a, d); }
int SCCFacade::SCCFetchForDiffFromArc(Items &i, Args &a, Diags &d) { return answer("SCCFetchForDiffFromArc", i, a, d); }
int SCCFacade::SCCListArchive(Items &i, Args &a, Diags &d) { return answer("SCCListArchive", i, a, d); }
int SCCFacade::SCCHistory(Units &u, Args &a, Diags &d) { return answer("SCCHistory", u, a, d); }
int SCCFacade::SCCAltHistory(Items &i, Args &a, Diags &d) { return answer("SCCAltHistory", i, a, d); }
int SCCFacade::SCCProperties(Units &u, Args &a, Diags &d) { return answer("SCCProperties", u, a, d); }
int SCCFacade::doSetUpSCC() { return answer("doSetUpSCC"); }
int SCCFacade::doCloseProjectSCC() { return answer("doCloseProjectSCC"); }
int SCCFacade::doCleanUpSCC() { return answer("doCleanUpSCC"); }
int SCCFacade::SCCRunToolExe() { return answer("SCCRunToolExe"); }

int MoveMemberSCC::operator()(Units &, Args &, Diags &, bool) { return 0; } // not called: SCCFacade has the entry
int DeleteMemberSCC::operator()(Units &, Args &, Diags &, bool) { return 0; }
int MoveMemberSCC::movePackageContent(IUnit *package, Units &u, const CString &from, const CString &to, Args &a, Diags &d, bool hybrid) {
    return answer("movePackageContent", package, u, from, to, a, d, hybrid);
}
int DeleteMemberSCC::DeleteDirectory(const CString &path, Args &a, Diags &d) { return answer("DeleteDirectory", path, a, d); }
// clang-format on
