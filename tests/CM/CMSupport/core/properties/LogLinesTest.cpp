#include "CM/CMSupport/core/CMProperty.h"

#include <gtest/gtest.h>

namespace {

class LogLines : public testing::Test {
  protected:
    CString out = "before";
};

TEST_F(LogLines, FrameACall) {
    CMProperty::getPreSCCCallLogMsg("SccCheckout", out);
    EXPECT_EQ(out, "Invoking SccCheckout on Scc dll");
    CMProperty::getPostSCCCallLogMsg("SccCheckout", out);
    EXPECT_EQ(out, "Returned from SccCheckout on Scc dll");
}

TEST_F(LogLines, NameTheFileOfACall) {
    CMProperty::getPreSCCCallLogMsg("SccAdd", "/models/Pump.ocl", out);
    EXPECT_EQ(out, "Invoking SccAdd on Scc dll for the following file:\n\t/models/Pump.ocl\n");
}

TEST_F(LogLines, NameTheFilesOfACall) {
    const char *files[] = {"a.ocl", "b.ocl", "c.ocl"};
    CMProperty::getPreSCCCallLogMsg("SccGet", 2, files, out);
    EXPECT_EQ(out, "Invoking SccGet on Scc dll for the following files:\n\ta.ocl\n\tb.ocl\n");
    CMProperty::getPreSCCCallLogMsg("SccGet", 0, files, out);
    EXPECT_EQ(out, "Invoking SccGet on Scc dll for the following files:\n");
}

TEST_F(LogLines, AreNotMadeForNoFiles) {
    const char *none = nullptr;
    CMProperty::getPreSCCCallLogMsg("SccAdd", none, out);
    EXPECT_EQ(out, "before");
    const char *const *noArray = nullptr;
    CMProperty::getPreSCCCallLogMsg("SccAdd", 3, noArray, out);
    EXPECT_EQ(out, "before");
}

TEST_F(LogLines, TellTheReturnCode) {
    CMProperty::getSCCReturnLogMsg("SccOpenProject", -2147483647L, out);
    EXPECT_EQ(out, "Scc dll returned -2147483647 from SccOpenProject");
}

TEST_F(LogLines, TakeNamesAsTheyAre) {
    CMProperty::getSCCReturnLogMsg("%s%n", 0, out);
    EXPECT_EQ(out, "Scc dll returned 0 from %s%n");
}

} // namespace
