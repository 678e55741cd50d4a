// Holds one result line about one unit or archive item.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class CMArchiveItem;
class IUnit;

class ORC_CM_API CMDiagnostic {
  public:
    CMDiagnostic() = default;
    /// With a unit or item, its kind and name precede the text: "Class 'Pump': text". `result` is 1 for success, 0
    /// for failure.
    CMDiagnostic(const int &result, const CString &text, const IUnit *unit);
    CMDiagnostic(const int &result, const CString &text, const CMArchiveItem *item);

    [[nodiscard]] int getResult() const { return result_; }
    [[nodiscard]] CString getDiagnostic() const { return text_; }

  private:
    int result_ = 0;
    CString text_;
};

using CMDiagnosticList = CList<CMDiagnostic, CMDiagnostic &>;
