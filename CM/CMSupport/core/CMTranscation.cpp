#include "CM/CMSupport/core/CMTranscation.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/Quietly.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/Messages.h"
#include "CM/host/Undoer.h"
#include "CM/host/Utilities.h"

#include <ostream>

CList<CMTranscation *, CMTranscation *> CMTranscation::m_TxnList(10);
CMTxnGlobalState CMTranscation::myGlobalState;

namespace {

std::ostream *outputStream() {
    IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
    return manager == nullptr ? nullptr : manager->getOutputStream();
}

} // namespace

CMTranscation::CMTranscation(AbstractPackedViewParams *viewParams, int flag, CMTranscationType type,
                             const CString &name)
    : name_(name), type_(type), entry_(this) {
    startUndoStep(viewParams, flag);
    try {
        showOutPutWindow();
        markStartTranscation();
    } catch (...) { // the destructor won't run
        core::quietly([this] { endUndoStep(); });
        throw;
    }
}

CMTranscation::~CMTranscation() {
    core::quietly([this] { endUndoStep(); });
    core::quietly([this] { markEndTranscation(); });
}

CMTranscation::Entry::Entry(CMTranscation *transaction) : transaction_(transaction) {
    if (!m_TxnList.Find(transaction_)) {
        m_TxnList.AddTail(transaction_);
    }
}

CMTranscation::Entry::~Entry() {
    if (const auto position = m_TxnList.Find(transaction_)) {
        m_TxnList.RemoveAt(position);
    }
    if (m_TxnList.IsEmpty()) {
        myGlobalState.reset();
    }
}

void CMTranscation::startUndoStep(AbstractPackedViewParams *viewParams, int flag) const {
    if (Undoer *const undoer = type_ == CMTxnTool ? nullptr : Undoer::instance()) {
        undoer->startTransaction(viewParams, flag, 0, 0);
    }
}

void CMTranscation::endUndoStep() const {
    if (type_ != CMTxnTool && Undoer::instance() != nullptr) {
        Undoer::endTransaction();
    }
}

CMTranscation *CMTranscation::getCurTranscation() { return m_TxnList.IsEmpty() ? nullptr : m_TxnList.GetTail(); }

CString CMTranscation::getOperationName() const {
    return name_.IsEmpty() ? getOperationNameFromType(type_) : name_;
}

CString CMTranscation::getOperationNameFromType(CMTranscationType type) {
    const bool isKnown = type >= CMTxnLock && type < CMTxnTool;
    const auto offset = static_cast<unsigned>(isKnown ? type : CMTxnTool);
    return resources::text(
        static_cast<resources::Text>(static_cast<unsigned>(resources::Text::operationLock) + offset));
}

bool CMTranscation::isValidTranscation() const {
    IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return false;
    }
    if (CMProperty::useSccCompliantTool() != 0) {
        return true;
    }
    const IProperty *const tool = CMProperty::getCMTool(project, IProperty::inherited);
    if (tool != nullptr && tool->getValue().CompareNoCase("NONE") == 0) {
        notifyUserAndAsk(resources::text(resources::Text::noToolSelected), MB_ICONHAND, 0, messageLevelDefault);
        OutcomeReport report;
        report.fail(CMOutcome::Kind::noTool, resources::Text::noToolSelected);
        report.send();
        return false;
    }
    return true;
}

void CMTranscation::showOutPutWindow() const {
    if (IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager()) {
        manager->showOutputWindow(true);
    }
}

void CMTranscation::markStartTranscation() const {
    if (outputStream() == nullptr) {
        return;
    }
    if (isGeneralPropertyTrue(keys::clearWindow, false)) {
        if (ICMOutputWindow *const window = IAbstractCMManager::GetCMManager()->getOutputWindow()) {
            window->clear();
        }
    }
    writeSeparator(keys::startSeparator);
}

void CMTranscation::markEndTranscation() const { writeSeparator(keys::endSeparator); }

void CMTranscation::writeSeparator(const CString &key) const {
    std::ostream *const stream = outputStream();
    if (stream == nullptr) {
        return;
    }
    const IProperty *const separator = findGeneralProperty(key);
    CString text = separator == nullptr ? CString() : separator->getValue();
    if (text.IsEmpty()) {
        return;
    }
    expandKeyWords(text);
    *stream << text << std::flush; // no line end: the property contains one if wanted
}

void CMTranscation::expandKeyWords(CString &text) const {
    const auto replace = [&text](std::string_view keyWord, const auto &value) {
        if (text.Find(keyWord) >= 0) {
            text.Replace(keyWord, value());
        }
    };
    replace("$Time", oqGetCurrentTime);
    replace("$Date", oqGetCurrentDate);
    replace("$User", oqGetCurrentUser);
    replace("$Operation", [this] { return getOperationName(); });
}
