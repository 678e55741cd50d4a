#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class SomeOperation final : public CMOperation {};
class SomeArchiveOperation final : public CMArchiveOperation {};
class SomeFreeTextOperation final : public CMFreeTextOperation {};

class IsCMTool : public CoreFixture {
  protected:
    int ask(bool hybrid = false, IDObject *object = nullptr) {
        return SomeOperation().isCMTool(message, object, hybrid);
    }
    CString message = "before";
};

TEST_F(IsCMTool, SaysYesToAToolAndEmptiesTheMessage) {
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(message, "");
}

TEST_F(IsCMTool, SaysNoToNoneInAnyCaseAndTellsWhy) {
    for (const char *none : {"None", "NONE", "none"}) {
        host.setTool(none);
        message = "before";
        EXPECT_EQ(ask(), 0) << none;
        EXPECT_EQ(message, resources::text(resources::Text::noToolSelected)) << none;
    }
}

TEST_F(IsCMTool, SaysNoWithoutTheToolPropertyAndLeavesTheMessage) {
    project().configuration = nullptr;
    EXPECT_EQ(ask(), 0);
    EXPECT_EQ(message, "before");
}

TEST_F(IsCMTool, ReadsTheToolFromTheObjectItIsGiven) {
    auto &unit = host.addClass("Pump");
    host.setProperty(unit, IPN::CM, IPN::CMGeneral, IPN::CMTool, "None");
    EXPECT_EQ(ask(false, &unit), 0);
    EXPECT_EQ(ask(false, nullptr), 1);
}

TEST_F(IsCMTool, LetsAHybridCallThroughOnTheProviderRouteWithoutATool) {
    setProviderRoute();
    host.setTool("None");
    EXPECT_EQ(ask(true), 1);
    EXPECT_EQ(message, "before") << "no tool was asked for";
}

TEST_F(IsCMTool, StopsACallOnTheProviderRouteThatIsNotHybridIfTheToolIsNone) {
    setProviderRoute();
    host.setTool("None");
    EXPECT_EQ(ask(false), 0);
    EXPECT_EQ(message, resources::text(resources::Text::noToolSelected));
}

TEST_F(IsCMTool, AsksForTheToolInAHybridCallOnTheCommandRoute) {
    host.setTool("None");
    EXPECT_EQ(ask(true), 0);
}

TEST(OperationDefaults, GiveZero) {
    CMArchiveItemList items;
    CMUnitList units;
    CMArgumentList args;
    CMDiagnosticList diags;
    EXPECT_EQ(SomeArchiveOperation()(items, args, diags), 0);
    EXPECT_EQ(SomeFreeTextOperation()(units, diags), 0);
    EXPECT_EQ(diags.GetCount(), 0);
}

} // namespace
