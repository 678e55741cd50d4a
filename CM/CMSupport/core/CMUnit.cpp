#include "CM/CMSupport/core/CMUnit.h"

#include "CM/CMSupport/core/CMPathMapper.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Utilities.h"
#include "CM/platform/PathText.h"

#include <array>

CMUnit::CMUnit(const IUnit *unit) : unit_(unit) {
    if (unit_ != nullptr) {
        fileName_ = unit_->getFileName();
        directory_ = platform::directoryOfPath(unit_->getFullFileName());
    }
}

CMUnit::CMUnit(const CMArchiveItem *item) : item_(item) {
    if (item_ != nullptr) {
        fileName_ = item_->getName() + item_->getSuffix();
        directory_ = item_->getLocalPath();
    }
}

const CMUnit::Variable *CMUnit::find(const CString &name) {
    static constexpr std::array variables{
        Variable{"Unit", &CMUnit::fileName},
        Variable{"UnitPath", &CMUnit::path},
        Variable{"UnitDirPath", &CMUnit::directoryOrHere},
        Variable{"UnitDirectory", &CMUnit::directoryBelowWorkingDir},
        Variable{"UnitArchivePath", &CMUnit::archivePath},
        Variable{"UnitArchiveDir", &CMUnit::archiveDir},
    };
    for (const Variable &variable : variables) {
        if (name.CompareNoCase(variable.name) == 0) {
            return &variable;
        }
    }
    return nullptr;
}

int CMUnit::isNamed(const CString &name) const { return find(name) != nullptr ? 1 : 0; }

CString CMUnit::substitute(const CString &name) {
    const Variable *const variable = find(name);
    return variable == nullptr ? name : (this->*variable->value)();
}

CString CMUnit::fileName() const { return fileName_; }

CString CMUnit::path() const { return directory_.IsEmpty() ? fileName_ : paths::join(directory_, fileName_); }

CString CMUnit::directoryOrHere() const { return directory_.IsEmpty() ? CString(".") : directory_; }

CString CMUnit::directoryBelowWorkingDir() const {
    if (directory_.IsEmpty() || CurrentWorkspace::GetActiveProject() == nullptr) {
        return {};
    }
    const CString working = paths::workingDirectory();
    if (directory_.Find(working) != 0) {
        return {};
    }
    // Required: the next character counts as the separator, whatever it is.
    const CString below = directory_.Mid(working.GetLength() + 1);
    return below.IsEmpty() ? below : oqPathSeparator() + below;
}

CString CMUnit::archivePath() const {
    if (unit_ == nullptr && item_ == nullptr) {
        return {};
    }
    if (isDebugTraceOn()) {
        static_cast<void>(CMPathMapper::expandedRepository()); // called for its trace lines
    }
    return unit_ != nullptr ? CMPathMapper::getArchivePathFromLocalPath(unit_->getFullFileName())
                            : item_->getFileNameWithPath();
}

CString CMUnit::archiveDir() const {
    if (unit_ == nullptr && item_ == nullptr) {
        return {};
    }
    CString repository = CMPathMapper::expandedRepository();
    if (!CMPathMapper::isLayout(repository)) {
        return repository; // a "$ArchivePath" in it is replaced when this value is expanded
    }
    return unit_ != nullptr ? CMPathMapper::getArchivePathFromLocalPath(unit_->getOwnDirectory()) : CString();
}
