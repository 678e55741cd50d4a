#include "tests/support/recording_host/UnitState.h"

#include "tests/support/recording_host/RecordingHost.h"

namespace recording {

namespace {

const UnitState *ownerUnit(const ObjectState &state) {
    return state.owner == nullptr ? nullptr : dynamic_cast<const UnitState *>(&ObjectState::of(state.owner));
}

} // namespace

CString UnitState::fullName() const {
    if (!fullFileName.IsEmpty()) {
        return fullFileName;
    }
    return directory.IsEmpty() ? fileName : directory + "/" + fileName;
}

CString UnitState::nameNoExtension() const {
    const int dot = fileName.ReverseFind('.');
    return dot < 0 ? fileName : fileName.Left(dot);
}

CString UnitState::nameForRepos() const {
    if (!reposName.IsEmpty()) {
        return reposName;
    }
    return RecordingHost::current().model.fullPathRepFiles ? fullName() : fileName;
}

bool UnitState::readHeader() {
    note("update header", headerReadable ? "1" : "0");
    if (onUpdateHeader) {
        onUpdateHeader(*this);
    }
    if (headerReadable && !headerInFile.IsEmpty()) {
        header = headerInFile;
    }
    return headerReadable;
}

void UnitState::noteMode(const CString &mode) {
    note("update mode", mode);
    if (onUpdateMode) {
        onUpdateMode(*this, mode);
    }
}

void UnitState::noteState(long state) {
    note("set state", std::to_string(state));
    cmState = state;
}

int UnitState::findSccArchive(CString &projName, CString &auxPath) const {
    for (const UnitState *unit = this; unit != nullptr; unit = ownerUnit(*unit)) {
        if (unit->sccArchive) {
            projName = unit->sccArchive->first;
            auxPath = unit->sccArchive->second;
            return 1;
        }
    }
    return 0;
}

int UnitState::findBatchArchive(CString &archive) const {
    for (const UnitState *unit = this; unit != nullptr; unit = ownerUnit(*unit)) {
        if (unit->batchArchive) {
            archive = *unit->batchArchive;
            return 1;
        }
    }
    return 0;
}

void UnitState::note(const CString &what, const CString &value) const {
    RecordingHost::current().note(what + " " + name + " " + value);
}

int UnitState::noteSave(const CString &path, ORYSaveLoadOption option) {
    note("save", path + " option=" + std::to_string(static_cast<int>(option)));
    if (saveResult != 0) {
        modified = false;
    }
    return saveResult;
}

} // namespace recording
