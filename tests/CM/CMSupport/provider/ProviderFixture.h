// Sets up the tests of the provider route: a registry that names the double, a project that uses it, and a process
// that has not met a provider yet. `host.calls` holds the calls of the double in between those of the host, each
// with "provider " before it.
#pragma once

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/ProviderState.h"
#include "CM/platform/SharedLibrary.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"
#include "tests/support/double_provider/DoubleProvider.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

class ProviderFixture : public CoreFixture {
  protected:
    explicit ProviderFixture(const std::string &library = DOUBLE_PROVIDER) {
        resetProvider();
        CString error;
        if (!library_.load(library, error)) {
            throw std::runtime_error(error.str());
        }
        using Access = support::DoubleProvider *();
        provider = reinterpret_cast<Access *>(library_.entry("doubleProvider"))();
        *provider = {};
        provider->onCall = [this](const std::string &call) { host.note("provider " + call); };
        ::setenv("ORCHARD_REGISTRY", (scratch / "registry.reg").c_str(), 1);
        writeRegistry(library);
        setProviderRoute();
        CMProperty::useSccCompliantTool();
        host.clearRecords();
    }
    ~ProviderFixture() override {
        resetProvider();
        ::unsetenv("ORCHARD_REGISTRY");
    }

    void writeRegistry(const std::string &library) const {
        write(scratch / "registry.reg", "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\SourceCodeControlProvider]\n"
                                        "\"ProviderRegKey\"=\"Software\\\\Double\"\n\n"
                                        "[HKEY_LOCAL_MACHINE\\Software\\Double]\n\"SccServerPath\"=\"" +
                                            library + "\"\n");
    }
    /// Registers another library, which the project finds from now on.
    void registerLibrary(const std::string &library) {
        writeRegistry(library);
        host.model.activeProject = nullptr;
        CMProperty::ResetIfActiveProjectChanged();
        host.model.activeProject = &project();
        CMProperty::useSccCompliantTool();
        host.clearRecords();
    }
    /// Sets a property of all providers.
    void setProviderProperty(const CString &key, const CString &value) {
        host.setProperty(nullptr, IPN::CM, "SCC", key, value);
    }
    /// Connects the project, by its properties.
    void associate(const CString &projName, const CString &auxPath = "aux") {
        setProviderProperty("ProjName", projName);
        setProviderProperty("AuxProjPath", auxPath);
    }
    /// The property of the project itself; "(none)" without one.
    [[nodiscard]] CString ownProperty(const CString &key) {
        const IProperty *const own = project().findProperty(IPN::CM, "SCC", key, IProperty::local);
        return own == nullptr ? CString("(none)") : own->getValue();
    }
    /// The names of the contexts in the list.
    [[nodiscard]] static std::vector<std::string> contextNames() {
        std::vector<std::string> names;
        for (const pvContextStruct *const context : CMProperty::getPvContextStructList()) {
            names.push_back(context == nullptr ? "(null)" : context->getpvContextName().str());
        }
        return names;
    }
    /// The entries that were called, without their arguments.
    [[nodiscard]] std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (const std::string &call : provider->calls) {
            names.push_back(call.substr(0, call.find(' ')));
        }
        return names;
    }
    /// All effects in their order; the log lines without their source.
    [[nodiscard]] std::vector<std::string> effects() const {
        std::vector<std::string> effects;
        for (const std::string &call : host.calls) {
            effects.push_back(call.starts_with("log ") ? "log" + call.substr(call.find(": ")) : call);
        }
        return effects;
    }
    /// Does what a crashing provider does.
    static SCCRTN crash() { return std::raise(SIGSEGV); }

    support::DoubleProvider *provider = nullptr;

  private:
    static void resetProvider() {
        ProviderState &state = providerState();
        for (pvContextStruct *const context : state.contexts) {
            const std::unique_ptr<pvContextStruct> owned(context);
        }
        std::destroy_at(&state);
        std::construct_at(&state);
        CMProperty::SCCToolName.Empty();
    }

    platform::SharedLibrary library_;
};
