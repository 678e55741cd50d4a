#include "CM/host/Reload.h"

#include "tests/support/recording_host/RecordingHost.h"

namespace {

void note(const CString &call) { RecordingHost::current().note(call); }
recording::ReloadScript &script() { return RecordingHost::current().reload; }
CString nameOf(const IUnit *unit) { return unit == nullptr ? CString("none") : unit->getName(); }
CString number(int value) { return std::to_string(value); }

} // namespace

QuickATMFacade::QuickATMFacade(Callback before, void *beforeArgument, Callback after, void *afterArgument)
    : after_(after), afterArgument_(afterArgument) {
    note(before == nullptr && after == nullptr && beforeArgument == nullptr && afterArgument == nullptr
             ? "reload scope start"
             : "reload scope start with callbacks");
    if (before != nullptr) {
        before(beforeArgument);
    }
}
QuickATMFacade::~QuickATMFacade() {
    if (after_ != nullptr) {
        after_(afterArgument_);
    }
    note("reload scope end");
}
bool QuickATMFacade::CanReloadUnit(const IUnit *unit, int flag) {
    const bool can = !script().canReload || script().canReload(unit, flag);
    note("can reload " + nameOf(unit) + " flag=" + number(flag) + " -> " + number(can ? 1 : 0));
    return can;
}
IUnit *QuickATMFacade::reloadUnit(IUnit *unit, int flag, int last) {
    note("reload " + nameOf(unit) + " flag=" + number(flag) + (last == 0 ? "" : " last=" + number(last)));
    return script().reloadUnit ? script().reloadUnit(unit, flag) : unit;
}

ATMFacade::ATMFacade(const CString &directory) : directory_(directory) { note("loader start " + directory); }
ATMFacade::~ATMFacade() { note("loader end"); }
IUnit *ATMFacade::addToModel(const CString &fileName, int flag, int third, int fourth, bool fifth, void *sixth) {
    CString call;
    call.Format("add to model %s flag=%d", fileName.c_str(), flag);
    if (third != 0 || fourth != 0 || fifth || sixth != nullptr) {
        call.AppendFormat(" %d %d %d %s", third, fourth, fifth ? 1 : 0, sixth == nullptr ? "none" : "given");
    }
    note(call);
    return script().addToModel ? script().addToModel(directory_, fileName, flag) : nullptr;
}

void ATMRecursiveHelper::getListOFFilesIn(const CString &path, CStringList &files, int flag) {
    note("files in " + path + " flag=" + number(flag));
    if (script().filesIn) {
        script().filesIn(path, files, flag);
    }
}
void ATMRecursiveHelper::getListOFFilesIn(const IUnit *unit, CStringList &files, int recursive, int information) {
    note("files in unit " + nameOf(unit) + " recursive=" + number(recursive) +
         " information=" + number(information));
    if (script().filesInUnit) {
        script().filesInUnit(unit, files, recursive, information);
    }
}
void ATMRecursiveHelper::getListOFInformationUnits(const IUnit *unit, CList<IUnit *, IUnit *> &units) {
    note("information units of " + nameOf(unit));
    if (script().informationUnits) {
        script().informationUnits(unit, units);
    }
}
void ATMRecursiveHelper::getListOFInformationFiles(const CString &fileName, CStringList &files) {
    note("information files of " + fileName);
    if (script().informationFiles) {
        script().informationFiles(fileName, files);
    }
}

struct CCMFileCompare::Pictures {
    CString path;
};

CCMFileCompare::CCMFileCompare(const CString &path) : pictures_(std::make_unique<Pictures>(Pictures{path})) {
    note("compare start " + path);
}
CCMFileCompare::~CCMFileCompare() { note("compare end"); }
void CCMFileCompare::LoadFile1() { note("compare load before"); }
void CCMFileCompare::LoadFile2() { note("compare load after"); }
int CCMFileCompare::Compare() {
    const int same = script().compare ? script().compare(pictures_->path) : 0;
    note("compare -> " + number(same));
    return same;
}
void CCMFileCompare::atm(IUnit *unit) {
    note("compare atm " + nameOf(unit));
    if (script().atm) {
        script().atm(unit);
    }
}
