// Which units an operation may work on.
#include "CM/CMSupport/core/CMTranscation.h"

#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/IPN.h"
#include "CM/host/Messages.h"

#include <ostream>
#include <vector>

using resources::Text;

namespace {

bool isAllowed(const IProject &project, const CString &key) {
    const IProperty *const property = project.findProperty(IPN::CM, IPN::General, key, IProperty::inherited);
    return property != nullptr && property->getBool();
}

bool isReference(const IUnit &unit, const IEmbededFile *embedded) {
    if (unit.isReference()) {
        return true;
    }
    const IUnit *const holder = embedded == nullptr ? nullptr : embedded->getSaveUnit();
    return holder != nullptr && holder->isReference();
}

} // namespace

void CMTranscation::checkUnitsForOperation(CMUnitList &units) {
    if (units.IsEmpty()) {
        return;
    }
    IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
    std::ostream *const stream = manager == nullptr ? nullptr : manager->getOutputStream();
    const CMTranscation *const current = getCurTranscation();
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    if (current == nullptr || project == nullptr) {
        return;
    }
    const Permissions allowed{isAllowed(*project, "AllowCMOperationsOnStubUnits"),
                              isAllowed(*project, "AllowCMOperationsOnReferenceUnits")};
    // All is judged, and the list pruned, before the first box appears: while one is shown, the model and even the
    // list may change. All occurrences of a unit get the same verdict, so taking off the one at hand leaves what
    // searching for the first would leave, at a cost that doesn't depend on the list's length.
    struct Notice {
        Verdict verdict;
        CString kind; ///< empty for a controlled file
        CString name;
    };
    std::vector<Notice> notices;
    std::vector<CMUnitList::POSITION> barred;
    for (auto position = units.GetHeadPosition(); position;) {
        const auto here = position;
        const IUnit *const unit = units.GetNext(position);
        const Verdict verdict = unit == nullptr ? Verdict::stays : current->judge(*unit, allowed);
        if (verdict == Verdict::barredAsStub || verdict == Verdict::barredAsReference) {
            barred.push_back(here);
            notices.push_back({verdict, unit->getMetaClassDisplayName(), unit->getName()});
        } else if (verdict == Verdict::staysAsControlledFile) {
            notices.push_back({verdict, {}, dynamic_cast<const IEmbededFile &>(*unit).getEmbeddedFileName()});
        }
    }
    for (const auto &position : barred) {
        units.RemoveAt(position);
    }

    for (const auto &[verdict, kind, name] : notices) {
        if (verdict == Verdict::staysAsControlledFile) {
            tellAboutControlledFile(name);
            continue;
        }
        tellThatUnitsAreLeftOut();
        if (stream != nullptr) {
            const Text text = verdict == Verdict::barredAsStub ? Text::stubLeftOut : Text::referenceLeftOut;
            *stream << resources::format(text, {kind, name}) << '\n';
        }
    }
    if (stream != nullptr) {
        stream->flush();
    }
}

CMTranscation::Verdict CMTranscation::judge(const IUnit &unit, const Permissions &allowed) const {
    const auto *const embedded = dynamic_cast<const IEmbededFile *>(&unit);
    if (embedded == nullptr && !unit.isSaveUnit()) {
        return Verdict::stays;
    }
    if (!allowed.stubs && unit.isStub()) {
        // These are what loads a stub, or don't care.
        const bool worksOnStubs =
            type_ == CMTxnCheckOut || type_ == CMTxnConnect || type_ == CMTxnFetch || type_ == CMTxnTool;
        return worksOnStubs ? Verdict::stays : Verdict::barredAsStub;
    }
    if (!allowed.references && isReference(unit, embedded)) {
        return type_ == CMTxnConnect || type_ == CMTxnTool ? Verdict::stays : Verdict::barredAsReference;
    }
    return embedded != nullptr && type_ == CMTxnCheckOut ? Verdict::staysAsControlledFile : Verdict::stays;
}

void CMTranscation::tellAboutControlledFile(const CString &file) {
    if (myGlobalState.controlledFileShown != 0) {
        return;
    }
    OneTimeMessageBox(
        resources::text(Text::controlledFileTitle), resources::format(Text::controlledFileCheckOut, {file, file}),
        resources::text(Text::controlledFileDontShow), 1, "CONTROLLED_FILE_CHECKOUT_MSG", MB_ICONINFORMATION, 0);
    myGlobalState.controlledFileShown = 1;
}

void CMTranscation::tellThatUnitsAreLeftOut() {
    if (myGlobalState.barredUnitsShown == 0) {
        notifyUserAndAsk(resources::text(Text::someUnitsLeftOut), MB_ICONEXCLAMATION, 0, messageLevelDefault);
        myGlobalState.barredUnitsShown = 1;
    }
}
