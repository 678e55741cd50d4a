// Sets up the tests of operations through the provider: a connected project with an open context, a host that has
// set its callbacks, and states on display. Effects are recorded without those of looking up the context.
#pragma once

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"
#include "tests/support/OutcomeRecorder.h"

#include <algorithm>
#include <concepts>
#include <initializer_list>
#include <string>
#include <vector>

using Effects = std::vector<std::string>;

/// Answers every name with the name and what it was made for.
class EchoArgument : public CMArgument {
  public:
    explicit EchoArgument(CString text) : text_(std::move(text)) {}
    [[nodiscard]] int isNamed(const CString & /*name*/) const override { return 1; }
    CString substitute(const CString &name) override { return text_ + ":" + name; }

  private:
    CString text_;
};

class OperationFixture : public ProviderFixture {
  protected:
    explicit OperationFixture(const std::string &library = DOUBLE_PROVIDER) : ProviderFixture(library) {
        CMFacade::saveCallbackFunc() = [] { RecordingHost::current().note("save model"); };
        CMFacade::ATMCallbackFunc() = [](CMainFrame *) { RecordingHost::current().note("reloads open"); };
        CMFacade::afterATMCallbackFunc() = [](CMainFrame *) { RecordingHost::current().note("reloads close"); };
        CCMSyncQuestionDlg::m_response.Empty();
        project().showStatus = true;
        associate("Plant");
        open();
    }
    ~OperationFixture() override {
        CMFacade::saveCallbackFunc() = nullptr;
        CMFacade::ATMCallbackFunc() = nullptr;
        CMFacade::afterATMCallbackFunc() = nullptr;
        CCMSyncQuestionDlg::m_response.Empty();
        CMProperty::saveOnCheckout(1);
    }

    /// Opens the project's context, which is number 1, and forgets the calls for that.
    void open() {
        pvContextStruct *context = nullptr;
        SCCConnectToCMRepository().getSccContext(context, nullptr);
        forget();
    }
    void forget() {
        host.clearRecords();
        provider->calls.clear();
    }
    /// Takes the association away, so that there is no context.
    void disconnect() { associate("", ""); }
    /// Gives the unit a context of its own, which is opened when it is needed.
    static void associate(recording::Class &unit, const CString &projName) { unit.sccArchive = {projName, "aux"}; }
    using ProviderFixture::associate;

    /// The provider's own context of CMProperty::getPvContext() becomes that with the number 1.
    void useContextOfItems() {
        CMProperty::setPvContext(CMProperty::getPvContextStructList().GetHead()->getpvContextPtr());
    }

    [[nodiscard]] static std::string path(const IUnit &unit) { return unit.getFullFileName().str(); }
    void setState(const IUnit &unit, long state) { provider->states[path(unit)] = state; }
    void makeWritable(const IUnit &unit) { host.places.writable[unit.getFullFileName()] = true; }
    void makeFile(const IUnit &unit) const { write(path(unit), "text"); }
    static CMUnitList list(std::convertible_to<IUnit *> auto... units) {
        CMUnitList made;
        (made.AddTail(units), ...);
        return made;
    }
    static std::vector<IUnit *> entries(const CMUnitList &units) { return {units.begin(), units.end()}; }
    using ProviderFixture::entries;

    /// All effects but those of looking up a context and of showing the output window.
    [[nodiscard]] Effects effects() const {
        Effects kept = ProviderFixture::effects();
        std::erase_if(kept, [](const std::string &effect) {
            return effect.starts_with("faults ") || effect.starts_with("show window");
        });
        return kept;
    }
    /// The calls of the provider on files, without the queries.
    [[nodiscard]] Effects callsOn(const std::string &entry) const {
        Effects calls;
        for (const std::string &call : provider->calls) {
            if (call.starts_with(entry + " ")) {
                calls.push_back(call.substr(entry.size() + 1));
            }
        }
        return calls;
    }
    /// The units that were reloaded in place.
    [[nodiscard]] Effects reloads() const {
        Effects calls = host.callsOf("reload ");
        std::erase_if(calls, [](const std::string &call) { return call.starts_with("reload scope "); });
        return calls;
    }
    [[nodiscard]] std::vector<std::string> shownTexts() const {
        std::vector<std::string> texts;
        for (const auto &message : host.messages.shown) {
            texts.push_back(message.text.str());
        }
        return texts;
    }
    static std::string text(resources::Text number, std::initializer_list<std::string_view> arguments = {}) {
        return resources::format(number, arguments);
    }
    static std::string success(resources::Text what) {
        return text(resources::Text::providerSuccess, {resources::text(what)});
    }
    /// The message of a result of the provider that is an error.
    static std::string errorText(resources::Text message) {
        return text(resources::Text::providerErrorOpening) + text(message) +
               text(resources::Text::providerClosing);
    }

    // The effects of steps that operations share.

    static Effects joined(std::initializer_list<Effects> parts) {
        Effects all;
        for (const Effects &part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }
    static Effects logged(const std::string &line) { return {"log: " + line}; }
    /// A call on files with all its log lines, or without the one after it. `arguments` follow the files.
    static Effects called(const std::string &entry, const std::vector<std::string> &files,
                          const std::string &arguments, bool logsReturn = true, long result = 0) {
        std::string lines;
        std::string names;
        for (const std::string &file : files) {
            lines += "\t" + file + "\n";
            names += (names.empty() ? "" : ",") + file;
        }
        const std::string before = entry == "SccQueryInfo" ? "" : " window=null";
        Effects made{"log: Invoking " + entry + " on Scc dll for the following files:\n" + lines,
                     "provider " + entry + " context=1" + before + " files=" + names + arguments};
        if (logsReturn) {
            made.push_back("log: Returned from " + entry + " on Scc dll");
        }
        made.push_back("log: Scc dll returned " + std::to_string(result) + " from " + entry);
        return made;
    }
    static Effects queried(const std::string &file, bool logsReturn = true) {
        return called("SccQueryInfo", {file}, "", logsReturn);
    }
    static Effects reloaded(const IUnit &unit) {
        const std::string name = unit.getName().str();
        return {"log: Performing ATM for the file " + path(unit), "can reload " + name + " flag=0 -> 1",
                "reload scope start", "reload " + name + " flag=0", "reload scope end"};
    }
    static Effects headerUpdated(const IUnit &unit) {
        return {"log: Updating CM Header for unit " + path(unit), "update header " + unit.getName().str() + " 1"};
    }
    static Effects modeUpdated(const IUnit &unit, const std::string &words = "Updating CM Mode for unit ") {
        return {"log: " + words + path(unit), "update mode " + unit.getName().str() + " "};
    }
    static Effects stateUpdated(const IUnit &unit, long state = 1) {
        return {"log: Updating CM Status for unit " + path(unit),
                "log: Invoking SccQueryInfo on Scc dll for the following file:\n\t" + path(unit) + "\n",
                "provider SccQueryInfo context=1 files=" + path(unit),
                "log: Returned from SccQueryInfo on Scc dll",
                "set state " + unit.getName().str() + " " + std::to_string(state)};
    }
    static Effects allUpdated(const IUnit &unit, long state = 1) {
        return joined(
            {headerUpdated(unit), modeUpdated(unit, "Updating Mode for unit "), stateUpdated(unit, state)});
    }

    CMArgumentList args;
    CMDiagnosticList diags;
};
