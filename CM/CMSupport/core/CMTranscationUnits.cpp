// Decides which units an operation may work on.
#include "CM/CMSupport/core/CMTranscation.h"

#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/Messages.h"

#include <algorithm>
#include <ostream>
#include <vector>

using resources::Text;

namespace {

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
    if (current == nullptr || CurrentWorkspace::GetActiveProject() == nullptr) {
        return;
    }
    const Permissions allowed{isGeneralPropertyTrue(keys::allowOnStubs, false),
                              isGeneralPropertyTrue(keys::allowOnReferences, false)};
    // All units are judged and removed before the first message box appears: while one is shown, the model and
    // even the list may change. All occurrences of a unit get the same verdict, so each is removed in place,
    // without a search through the list.
    struct Notice {
        Verdict verdict;
        CString kind; ///< empty for a controlled file
        CString name;
    };
    std::vector<Notice> notices;
    std::vector<CMUnitList::POSITION> barred;
    std::vector<OutcomeReport> reports;
    for (auto position = units.GetHeadPosition(); position;) {
        const auto here = position;
        IUnit *const unit = units.GetNext(position);
        const Verdict verdict = unit == nullptr ? Verdict::stays : current->judge(*unit, allowed);
        if (verdict == Verdict::barredAsStub || verdict == Verdict::barredAsReference) {
            barred.push_back(here);
            notices.push_back({verdict, unit->getMetaClassDisplayName(), unit->getName()});
            reports.emplace_back(*unit).fail(CMOutcome::Kind::leftOut, verdict == Verdict::barredAsStub
                                                                           ? Text::outcomeStub
                                                                           : Text::outcomeReference);
        } else if (verdict == Verdict::staysAsControlledFile) {
            notices.push_back({verdict, {}, dynamic_cast<const IEmbededFile &>(*unit).getEmbeddedFileName()});
        }
    }
    for (const auto &position : barred) {
        units.RemoveAt(position);
    }
    std::ranges::for_each(reports, &OutcomeReport::send);

    for (const auto &[verdict, kind, name] : notices) {
        if (verdict == Verdict::staysAsControlledFile) {
            reportControlledFile(name);
            continue;
        }
        reportLeftOutUnits();
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
        // These operations load a stub, or work on one as it is.
        const bool worksOnStubs =
            type_ == CMTxnCheckOut || type_ == CMTxnConnect || type_ == CMTxnFetch || type_ == CMTxnTool;
        return worksOnStubs ? Verdict::stays : Verdict::barredAsStub;
    }
    if (!allowed.references && isReference(unit, embedded)) {
        return type_ == CMTxnConnect || type_ == CMTxnTool ? Verdict::stays : Verdict::barredAsReference;
    }
    return embedded != nullptr && type_ == CMTxnCheckOut ? Verdict::staysAsControlledFile : Verdict::stays;
}

void CMTranscation::reportControlledFile(const CString &file) {
    if (myGlobalState.controlledFileShown != 0) {
        return;
    }
    OneTimeMessageBox(
        resources::text(Text::controlledFileTitle), resources::format(Text::controlledFileCheckOut, {file, file}),
        resources::text(Text::controlledFileDontShow), 1, "CONTROLLED_FILE_CHECKOUT_MSG", MB_ICONINFORMATION, 0);
    myGlobalState.controlledFileShown = 1;
}

void CMTranscation::reportLeftOutUnits() {
    if (myGlobalState.barredUnitsShown == 0) {
        notifyUserAndAsk(resources::text(Text::someUnitsLeftOut), MB_ICONEXCLAMATION, 0, messageLevelDefault);
        myGlobalState.barredUnitsShown = 1;
    }
}
