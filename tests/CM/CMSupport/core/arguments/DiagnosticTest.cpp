#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class Diagnostic : public CoreFixture {};

TEST_F(Diagnostic, OfAUnitNamesItsKindAndItsName) {
    const IUnit *unit = &host.addClass("Pump");
    const CMDiagnostic diagnostic(1, "checked out", unit);
    EXPECT_EQ(diagnostic.getDiagnostic(), "Class 'Pump': checked out");
    EXPECT_EQ(diagnostic.getResult(), 1);
}

TEST_F(Diagnostic, WithoutAUnitIsTheTextAlone) {
    const IUnit *none = nullptr;
    const CMDiagnostic diagnostic(0, "no tool", none);
    EXPECT_EQ(diagnostic.getDiagnostic(), "no tool");
    EXPECT_EQ(diagnostic.getResult(), 0);
}

TEST_F(Diagnostic, OfAnItemNamesItsTypeAndItsName) {
    const CMArchiveItem item("sub/Pump.ocl", "1.2", CMArchiveItem::readOnly, "", "");
    const CMDiagnostic diagnostic(0, "is locked", &item);
    EXPECT_EQ(diagnostic.getDiagnostic(), "Class 'Pump': is locked");
    EXPECT_EQ(diagnostic.getResult(), 0);
}

TEST_F(Diagnostic, WithoutAnItemIsTheTextAlone) {
    const CMArchiveItem *none = nullptr;
    EXPECT_EQ(CMDiagnostic(1, "done", none).getDiagnostic(), "done");
}

TEST_F(Diagnostic, CopiesBothFieldsOnAssignment) {
    const IUnit *none = nullptr;
    CMDiagnostic assigned;
    EXPECT_EQ(assigned.getDiagnostic(), "");
    assigned = CMDiagnostic(1, "done", none);
    EXPECT_EQ(assigned.getDiagnostic(), "done");
    EXPECT_EQ(assigned.getResult(), 1);
}

} // namespace
