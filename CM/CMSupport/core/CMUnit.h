// Supplies the template variables about the current unit or archive item.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/host/IUnit.h"

#include <string_view>

class ORC_CM_API CMUnit : public CMUserBasedArgument {
  public:
    /// The caller owns the unit or item, which must outlive this object. Null yields empty texts.
    explicit CMUnit(const IUnit *unit);
    explicit CMUnit(const CMArchiveItem *item);

    /// Returns non-zero for the names Unit, UnitDirectory, UnitPath, UnitDirPath, UnitArchivePath and
    /// UnitArchiveDir.
    [[nodiscard]] int isNamed(const CString &name) const override;
    [[nodiscard]] CString substitute(const CString &name) override;

    /// Returns the directory without a separator at its end.
    [[nodiscard]] CString getDirName() const { return directory_; }

  private:
    struct Variable {
        std::string_view name;
        CString (CMUnit::*value)() const;
    };
    [[nodiscard]] static const Variable *find(const CString &name);

    [[nodiscard]] CString fileName() const;
    [[nodiscard]] CString path() const;
    [[nodiscard]] CString directoryOrHere() const;
    [[nodiscard]] CString directoryBelowWorkingDir() const;
    [[nodiscard]] CString archivePath() const;
    [[nodiscard]] CString archiveDir() const;

    CString fileName_;
    CString directory_;
    const IUnit *unit_ = nullptr;
    const CMArchiveItem *item_ = nullptr;
};
