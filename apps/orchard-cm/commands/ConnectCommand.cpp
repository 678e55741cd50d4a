#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "orchard/model/Paths.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

namespace orchard_cm {

namespace {

/// Returns the archive as the tool needs it, which works in another directory: an address and a form of the tool's
/// own remain as they are, a path of the file system becomes a full one.
std::string fullArchive(const std::string &archive) {
    return archive.empty() || archive.find(':') != std::string::npos
               ? archive
               : std::filesystem::absolute(archive).lexically_normal().string();
}

std::string toolValue(const char *key) {
    CString value;
    CMProperty::getToolPropertyValue(key, value, false);
    return value.str();
}

/// Sets the project's archive, and restores it unless the change is kept.
class ArchiveChange {
  public:
    ArchiveChange(Session &session, const std::string &archive) : session_(session) {
        if (archive.empty()) {
            return;
        }
        before_ = toolValue(IPN::CMArchive);
        if (CMArchive::setMainArchive(archive) == 0) {
            throw Failure(ExitCode::failed, "the CM tool " + toolInUse() + " has no archive to choose (property " +
                                                IPN::CMArchive.str() + " is missing)");
        }
        changed_ = true;
        session_.save();
    }
    ~ArchiveChange() = default;
    ArchiveChange(const ArchiveChange &) = delete;
    ArchiveChange &operator=(const ArchiveChange &) = delete;

    void takeBack() {
        if (changed_) {
            CMArchive::setMainArchive(before_);
            session_.save();
        }
    }

  private:
    static std::string toolValue(const CString &key) { return orchard_cm::toolValue(key.str().c_str()); }

    Session &session_;
    std::string before_;
    bool changed_ = false;
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
        ArchiveChange change(context.session, archive);
        TemplateArguments arguments;
        arguments.addArchive();
        CMDiagnosticList diagnostics;
        CMUnitList noUnits; // the project chooses its archive itself
        context.session.setup().expectRuns(1);
        const std::size_t errorsBefore = context.output.errorCount();
        const OutcomeWatch watch;
        const int result = CMFacade::ConnectToArchive(noUnits, arguments.list(), diagnostics);
        reportDiagnostics(context, diagnostics);
        const std::string fault = faultOf(watch.fault());
        if (result == 0 || !fault.empty() || context.output.errorCount() > errorsBefore) {
            change.takeBack();
            context.session.saveIfModified();
            throw Failure(ExitCode::failed,
                          "the project is not connected" + (fault.empty() ? std::string() : ": " + fault));
        }
        context.session.saveIfModified();
        tell(context);
        return ExitCode::done;
    }

  private:
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
