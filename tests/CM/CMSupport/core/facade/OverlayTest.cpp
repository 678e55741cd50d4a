#include "CM/CMSupport/core/CMFacade.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class Overlay : public CoreFixture {};

TEST_F(Overlay, IsNoneForNoUnitAndForOneWithoutAFile) {
    EXPECT_EQ(getOverlayImage(nullptr), 0);
    auto &inner = host.addUnit("Inner");
    inner.saveUnit = false;
    inner.modified = true;
    EXPECT_EQ(getOverlayImage(&inner), 0);
}

TEST_F(Overlay, TellsAModifiedUnitFromAnotherOne) {
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(getOverlayImage(&pump), 3);
    pump.modified = true;
    EXPECT_EQ(getOverlayImage(&pump), 12);
}

TEST_F(Overlay, IsGivenToAnEmbeddedFileThatIsNoSaveUnit) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    notes.saveUnit = false;
    EXPECT_EQ(getOverlayImage(&notes), 3);
    notes.modified = true;
    EXPECT_EQ(getOverlayImage(&notes), 12);
}

} // namespace
