#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/platform/Files.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "orchard/model/ModelView.h"
#include "orchard/model/Paths.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace orchard_cm {

namespace {

/// Returns the archive as the tool needs it, which works in another directory: an address and a form of the tool's
/// own remain as they are, a path of the file system becomes a full one.
std::string fullArchive(const std::string &archive) {
    return archive.empty() || archive.find(':') != std::string::npos
               ? archive
               : std::filesystem::absolute(archive).lexically_normal().string();
}

constexpr std::string_view placeholder = "$ArchivePath";

std::string toolValue(const CString &key) {
    CString value;
    CMProperty::getToolPropertyValue(key, value, false);
    return value.str();
}

/// Returns whether the value is what a connect made of the template by filling in an address.
bool isFilledIn(const std::string &value, const std::string &pattern) {
    const std::size_t at = pattern.find(placeholder);
    return at != std::string::npos && value.size() + placeholder.size() >= pattern.size() &&
           value.starts_with(pattern.substr(0, at)) && value.ends_with(pattern.substr(at + placeholder.size()));
}

/// A property of the project that a connect fills in with the address of the archive.
class Address {
  public:
    Address(IProject &project, const char *key) : project_(project), key_(key) {}

    /// Brings back the placeholder that an earlier connect has filled in.
    void free() {
        const std::string before = toolValue(key_);
        const std::string tool = toolInUse();
        if (orchard::removeProperty(project_, IPN::CM.str(), tool, key_)) {
            pattern_ = toolValue(key_);
            if (!isFilledIn(before, pattern_)) {
                setProperty(project_, tool, key_, before);
            }
        }
        pattern_ = toolValue(key_);
    }
    [[nodiscard]] bool isToBeFilledIn() const { return pattern_.find(placeholder) != std::string::npos; }
    /// Returns whether the placeholder was replaced by nothing.
    [[nodiscard]] bool isEmpty() const {
        CString nothing = pattern_;
        nothing.Replace(CString(placeholder), "");
        return isToBeFilledIn() && nothing == toolValue(key_);
    }

  private:
    IProject &project_;
    std::string key_;
    std::string pattern_;
};

/// Keeps the library from saving while it connects, so that the project on disk changes as a whole or not at all.
class SavedAtTheEnd {
  public:
    explicit SavedAtTheEnd(Session &session) : session_(session) { session_.setup().onSave({}); }
    ~SavedAtTheEnd() {
        session_.setup().onSave([&session = session_] { session.save(); });
    }
    SavedAtTheEnd(const SavedAtTheEnd &) = delete;
    SavedAtTheEnd &operator=(const SavedAtTheEnd &) = delete;

  private:
    Session &session_;
};

/// Returns why the project is not connected; empty if it is.
std::string faultOf(const CMOutcome &fault) {
    if (fault.kind == CMOutcome::Kind::noCommand && fault.property.str() == keys::postConnect) {
        return std::string("the command succeeded, but the tool's set has no property ") + keys::postConnect +
               " (it must exist, but may be empty)";
    }
    return fault.reason.str();
}

class ConnectCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("ARCHIVE", archive_,
                       "The archive, as the tool names it: a directory, a file or an address; by default the "
                       "project's archive");
        app.footer("Links the project to the archive; some tools create the archive. See the page of the tool in\n"
                   "docs/tools.");
    }

    ExitCode run(Context &context) override {
        const ProjectHold held = context.session.holdAlone();
        const std::string archive = fullArchive(archive_);
        if (const auto fault = orchard::faultOfPath(archive); !fault.empty()) {
            throw Failure(ExitCode::usage, "the archive '" + archive + "' can't be given to a tool: " + fault);
        }
        requireCommand(IPN::CMConnectToCMRepository);
        IProject &project = context.session.project();
        const std::string tool = toolInUse();
        const std::string before = toolValue(IPN::CMArchive);
        PropertyBefore chosen(project, tool, IPN::CMArchive.str());
        PropertyBefore repository(project, tool, keys::repository);
        PropertyBefore root(project, tool, keys::archiveRoot);
        try {
            chosen.runOrRestore([&] {
                repository.runOrRestore([&] { root.runOrRestore([&] { connect(context, project, archive); }); });
            });
        } catch (...) {
            if (toolValue(IPN::CMArchive) != before) { // the tool has the property in common with other tools
                CMArchive::setMainArchive(before);
            }
            throw;
        }
        tell(context);
        return ExitCode::done;
    }

  private:
    /// The values of the project that a connect sets: archive, Repository, ArchiveRoot.
    using Values = std::array<std::string, 3>;
    static Values values() {
        return {toolValue(IPN::CMArchive), toolValue(keys::repository), toolValue(keys::archiveRoot)};
    }
    static bool isToBeFilledIn(const Values &values) {
        return std::any_of(values.begin(), values.end(),
                           [](const std::string &value) { return value.find(placeholder) != std::string::npos; });
    }
    [[noreturn]] static void failReadOnly(const std::string &file) {
        throw Failure(ExitCode::failed, "the project can't be connected: its file " + file + " is read-only",
                      "Check it out with --lock first.");
    }

    /// Throws a Failure if the project is not connected. A read-only project can be connected again to the archive
    /// that it names already.
    static void connect(Context &context, IProject &project, const std::string &archive) {
        const Values before = values();
        const std::string file = project.getFullFileName().str();
        const bool isReadOnly = !platform::hasWritePermission(file);
        if (isReadOnly && ((!archive.empty() && archive != before[0]) || isToBeFilledIn(before))) {
            failReadOnly(file);
        }
        IUnit *const unit = project.getSaveUnit();
        const bool wasModified = unit != nullptr && unit->isModified();
        if (!archive.empty() && CMArchive::setMainArchive(archive) == 0) {
            throw Failure(ExitCode::failed, "the CM tool " + toolInUse() + " has no archive to choose (property " +
                                                IPN::CMArchive.str() + " is missing)");
        }
        Address repository(project, keys::repository);
        Address root(project, keys::archiveRoot);
        repository.free();
        root.free();
        TemplateArguments arguments;
        arguments.addArchive();
        CMDiagnosticList diagnostics;
        CMUnitList noUnits; // the project chooses its archive itself
        context.session.setup().expectRuns(1);
        const std::size_t errorsBefore = context.output.errorCount();
        const OutcomeWatch watch;
        const int result = [&] {
            const SavedAtTheEnd saved(context.session);
            return CMFacade::ConnectToArchive(noUnits, arguments.list(), diagnostics);
        }();
        reportDiagnostics(context, diagnostics);
        std::string fault = faultOf(watch.fault());
        if (fault.empty() && (repository.isEmpty() || root.isEmpty())) {
            fault = std::string("the tool's answer names no address of the archive (property ") +
                    keys::repositoryPathPattern + ")";
        }
        if (result == 0 || !fault.empty() || context.output.errorCount() > errorsBefore) {
            throw Failure(ExitCode::failed,
                          "the project is not connected" + (fault.empty() ? std::string() : ": " + fault));
        }
        if (values() != before) {
            if (isReadOnly) {
                failReadOnly(file);
            }
        } else if (unit != nullptr && !wasModified) {
            unit->setModified(0, false);
        }
        context.session.saveIfModified();
    }

    static void tell(Context &context) {
        const std::string archive = CMArchive::getMainArchive().str();
        const std::string repository = toolValue(keys::repository);
        context.output.result({{"tool", toolInUse()}, {"archive", archive}, {"repository", repository}},
                              [&](std::ostream &out) {
                                  out << "connected to " << toolInUse();
                                  for (const auto &place : {archive, repository}) {
                                      out << (place.empty() ? "" : ", ") << place;
                                  }
                                  out << '\n';
                              });
    }

    std::string archive_;
};

} // namespace

std::unique_ptr<Command> makeConnectCommand() { return std::make_unique<ConnectCommand>(); }

} // namespace orchard_cm
