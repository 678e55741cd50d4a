#include "CM/host/IDObject.h"
#include "CM/host/Undoer.h"
#include "tests/support/recording_host/RecordingHost.h"

namespace {

void note(const CString &call) { RecordingHost::current().note(call); }

class RecordingUndoer final : public Undoer {
  public:
    void startTransaction(AbstractPackedViewParams *viewParams, int flag, int third, int fourth) override {
        CString call;
        call.Format("undo start flag=%d", flag);
        if (viewParams != nullptr || third != 0 || fourth != 0) {
            call.AppendFormat(" view=%s %d %d", viewParams == nullptr ? "none" : "given", third, fourth);
        }
        note(call);
        if (RecordingHost::current().undo.onStart) {
            RecordingHost::current().undo.onStart();
        }
        ++RecordingHost::current().undo.depth;
    }
};

} // namespace

Undoer *Undoer::instance() {
    static RecordingUndoer undoer; // holds nothing
    return RecordingHost::current().undo.exists ? &undoer : nullptr;
}
void Undoer::endTransaction() {
    note("undo end");
    if (RecordingHost::current().undo.onEnd) {
        RecordingHost::current().undo.onEnd();
    }
    --RecordingHost::current().undo.depth;
}
void Undoer::startDoNothingTransaction() {
    note("undo nothing start");
    ++RecordingHost::current().undo.nothingDepth;
}
void Undoer::endDoNothingTransaction() {
    note("undo nothing end");
    --RecordingHost::current().undo.nothingDepth;
}

UnUndoableTransaction::UnUndoableTransaction(int flag) {
    note("undo none start flag=" + std::to_string(flag));
    ++RecordingHost::current().undo.nothingDepth;
}
UnUndoableTransaction::~UnUndoableTransaction() {
    note("undo none end");
    --RecordingHost::current().undo.nothingDepth;
}

INObject::IgnoreCGModification::IgnoreCGModification() {
    note("ignore code generation start");
    ++RecordingHost::current().ignoringCodeGeneration;
}
INObject::IgnoreCGModification::~IgnoreCGModification() {
    note("ignore code generation end");
    --RecordingHost::current().ignoringCodeGeneration;
}
