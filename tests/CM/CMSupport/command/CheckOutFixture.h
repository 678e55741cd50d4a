// Sets up the tests of check out: a tool with templates for both forms, a host that has set its callbacks,
// and a user who answers from a script.
#pragma once

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <algorithm>
#include <concepts>
#include <vector>

/// An argument named "extra", without the answers that a test removes.
class ExtraArgument : public CMArgument {
  public:
    std::vector<bool> answers; ///< used up one by one; true once they are used up
    [[nodiscard]] int isNamed(const CString &name) const override {
        if (name.CompareNoCase("extra") != 0) {
            return 0;
        }
        const bool given = asked_ >= answers.size() || answers[asked_];
        ++asked_;
        return given ? 1 : 0;
    }
    CString substitute(const CString & /*name*/) override { return "x"; }

  private:
    mutable std::size_t asked_ = 0;
};

/// A configuration whose project is closed as soon as the tool has been looked up.
class ClosingConfiguration : public recording::Configuration {
  public:
    [[nodiscard]] IProperty *findProperty(const CString &subject, const CString &metaclass, const CString &key,
                                          int where, int a, int b, int c, int d, int e, int f) const override {
        IProperty *const found = Configuration::findProperty(subject, metaclass, key, where, a, b, c, d, e, f);
        if (key == IPN::CMTool) {
            RecordingHost::current().model.activeProject = nullptr;
        }
        return found;
    }
};

class CheckOutFixture : public CoreFixture {
  protected:
    CheckOutFixture() {
        setToolProperty(IPN::CMCheckOut, "co $Unit");
        setToolProperty(IPN::CMCheckOutFromArchive, "coa $Unit");
        CMFacade::saveCallbackFunc() = [] { RecordingHost::current().note("save model"); };
        CMFacade::ATMCallbackFunc() = [](CMainFrame *frame) {
            RecordingHost::current().note(frame == openFrame() ? "reloads open"
                                                               : "reloads open with another frame");
        };
        CMFacade::ATMCallbackFuncParameter() = openFrame();
        CMFacade::afterATMCallbackFunc() = [](CMainFrame *frame) {
            RecordingHost::current().note(frame == closeFrame() ? "reloads close"
                                                                : "reloads close with another frame");
        };
        CMFacade::afterATMCallbackFuncParameter() = closeFrame();
        CCMSyncQuestionDlg::m_response.Empty();
        host.environment.dialogDriver = &driver;
    }
    ~CheckOutFixture() override {
        CMFacade::saveCallbackFunc() = nullptr;
        CMFacade::ATMCallbackFunc() = nullptr;
        CMFacade::ATMCallbackFuncParameter() = nullptr;
        CMFacade::afterATMCallbackFunc() = nullptr;
        CMFacade::afterATMCallbackFuncParameter() = nullptr;
        CCMSyncQuestionDlg::m_response.Empty();
        CMProperty::saveOnCheckout(1);
        CMProperty::setSCCToolName("");
    }

    // Two frames that differ only by address; their contents are never read.
    static CMainFrame *openFrame() { return reinterpret_cast<CMainFrame *>(&frames_[0]); }
    static CMainFrame *closeFrame() { return reinterpret_cast<CMainFrame *>(&frames_[1]); }

    void makeWritable(const IUnit &unit) { host.places.writable[unit.getFullFileName()] = true; }
    void answer(const CString &button) { driver.play("CCMSyncQuestionDlg", {"press " + button}); }

    /// A project in the old layout, whose project file is there and writable, and nobody is asked about it.
    void useOldLayout() {
        setOldLayout();
        setToolProperty("AskOnCheckoutReadWrite", "No");
        write(unitsDirectory() / "Plant.ory", "old");
    }

    /// The provider route with a provider of a known name: a template that is looked up for the hybrid mode is
    /// that of the provider's name, any other is that of "SCC".
    void useProvider() {
        setProviderRoute();
        CMProperty::setSCCToolName("Basalt");
        host.setToolDefault("Basalt", IPN::CMCheckOut, "hybrid $Unit");
        host.setToolDefault("SCC", IPN::CMCheckOut, "co $Unit");
    }

    /// The working directory can't be entered, so that Execute answers 0.
    void breakExecute() { std::filesystem::remove(unitsDirectory()); }

    static CMUnitList list(std::convertible_to<IUnit *> auto... units) {
        CMUnitList made;
        (made.AddTail(units), ...);
        return made;
    }
    static std::vector<IUnit *> entries(const CMUnitList &units) { return {units.begin(), units.end()}; }

    /// The calls of the host in order, without the calls before and after each run of the tool.
    [[nodiscard]] std::vector<std::string> calls() const {
        std::vector<std::string> kept = host.calls;
        std::erase_if(kept,
                      [](const std::string &call) { return call.starts_with("wait ") || call == "run end"; });
        return kept;
    }
    [[nodiscard]] std::vector<std::string> logTexts() const {
        std::vector<std::string> texts;
        for (const auto &line : host.logLines) {
            texts.push_back(line.text.str());
        }
        return texts;
    }
    /// Returns the position of the first look-up of a key, or -1.
    [[nodiscard]] std::ptrdiff_t lookUpOf(const CString &key) const {
        const auto found = std::ranges::find(host.lookups, key,
                                             [](const recording::Lookup &lookup) { return lookup.property.key; });
        return found == host.lookups.end() ? -1 : found - host.lookups.begin();
    }
    /// Expects that the operation has left nothing behind.
    void expectNothingIsLeft() {
        EXPECT_TRUE(args.IsEmpty()) << "arguments";
        EXPECT_EQ(host.handlesAlive, 0);
        EXPECT_EQ(host.logsOpen, 0);
        EXPECT_EQ(host.worker.alive, 0);
    }

    orchard::ScriptedDialogDriver driver;
    CMArgumentList args;
    CMDiagnosticList diags;

  private:
    static inline int frames_[2] = {};
};
