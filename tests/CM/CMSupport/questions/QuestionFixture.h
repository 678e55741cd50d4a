// Provides a user who answers questions from a script, on the recording host.
#pragma once

#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <gmock/gmock.h>
#include <initializer_list>

class QuestionFixture : public testing::Test {
  protected:
    QuestionFixture() {
        CCMSyncQuestionDlg::m_response.Empty();
        host.environment.dialogDriver = &driver;
    }
    ~QuestionFixture() override { CCMSyncQuestionDlg::m_response.Empty(); }

    /// Asks once; each script is that of one run of the dialog.
    int ask(std::initializer_list<orchard::DialogScript> scripts = {}, int cancelable = 1) {
        for (const auto &script : scripts) {
            driver.play("CCMSyncQuestionDlg", script);
        }
        CCMSyncQuestionDlg dialog;
        dialog.setText("Overwrite Pump.ocl?");
        dialog.SetCancelableOperation(cancelable);
        return dialog.DoModal();
    }
    int press(const CString &button) { return ask({{"press " + button}}); }
    [[nodiscard]] std::size_t timesShown() const { return driver.shown().size(); }

    RecordingHost host;
    orchard::ScriptedDialogDriver driver;
};
