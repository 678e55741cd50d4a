#include "CM/CMSupport/command/CMAddMember.h"

#include "CM/CMSupport/command/ArchiveSelection.h"
#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"

#include <initializer_list>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace {

constexpr const char *source = "../CM/CMSupport/AddMember";

// --- One command for each unit.

class Run : public command::CommandRun<IUnit> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMAddMember,
                      .source = source,
                      .beforeRun = nullptr, // required: AddMember.WritesNoLogLine
                      .afterRun = nullptr,
                      .guard = CMORYHandler::ORYAdd},
                     args, error) {}

  protected:
    bool isWanted(IUnit &unit) override {
        // Required even for a unit that is then refused.
        // Test: AddMemberInTheOldLayout.TheArchiveIsSelectedForALeftOutUnitToo.
        command::selectArchive(unit);
        if (!CMProperty::isPre40Compatible() || dynamic_cast<const IProject *>(&unit) != nullptr) {
            return true;
        }
        const CString working = CMProperty::getWorkingDir();
        if (unit.getOwnDirectory() == working) {
            return true;
        }
        report().fail(CMOutcome::Kind::refused, reportOutside(unit, working));
        return false;
    }

    CString templateFor(IUnit &unit) override {
        CString text;
        const bool hasOwn = dynamic_cast<const IEmbededFile *>(&unit) != nullptr &&
                            CMProperty::getToolPropertyValue(keys::addControlledFile, text, false) != 0 &&
                            !text.IsEmpty();
        return hasOwn ? CString(keys::addControlledFile) : CommandRun::templateFor(unit);
    }

    void followUp(IUnit &unit, CMORYHandler *guard) override {
        guard->commit();
        command::updateHeader(unit);
        command::updateMode(unit);
    }

  private:
    /// Shows that the unit's file is outside the working directory. Returns the message.
    static CString reportOutside(const IUnit &unit, const CString &working) {
        const CString text =
            resources::format(resources::Text::unitOutsideWorkingDirectory,
                              {unit.getFileName(), working, unit.getMetaClassDisplayName(), unit.getName()});
        notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault);
        IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
        if (std::ostream *const stream = manager == nullptr ? nullptr : manager->getOutputStream()) {
            *stream << text << std::endl;
        }
        return text;
    }
};

// --- One check out and check in for each directory.

bool isOncePerDirectory() {
    const IProperty *const tool = findGeneralProperty(IPN::CMTool);
    const CString name = tool == nullptr ? CString() : tool->getValue();
    if (name.CompareNoCase("None") == 0) {
        return false;
    }
    // Required: a missing tool counts as one with an empty name.
    // Test: AddMemberByDirectory.AMissingToolCountsAsOneWithoutAName.
    const IProperty *const once = findProjectProperty(name, keys::addOncePerDirectory);
    return once != nullptr && once->getBool();
}

struct Placeholder {
    const char *name;
    const CString &text;
};

struct DirectoryStep {
    const char *property; ///< key of the template
    command::RunTexts log;
};

int runStep(CMOperation &operation, const DirectoryStep &step, std::initializer_list<Placeholder> placeholders,
            CMDiagnosticList &diags, OutcomeReport &report) {
    CString error;
    if (!command::isToolConfigured(operation, false, error, diags)) {
        return 0;
    }
    CString text;
    CMProperty::getToolPropertyValue(step.property, text, false);
    if (text.IsEmpty()) {
        report.lacksCommand(step.property);
        return 0;
    }
    CString root;
    // Required, although the root itself isn't used.
    // Test: AddMemberByDirectory.WithoutAnInstallationRootNothingRuns.
    if (oqGetRoot(root, error) != 1) {
        report.lacksValue(step.property, "$OQROOT");
        return 0;
    }
    report.uses(step.property);
    for (const Placeholder &placeholder : placeholders) {
        if (!command::mayReachCommand({placeholder.text}, report)) {
            return 0;
        }
        text.Replace(placeholder.name, placeholder.text);
    }
    CString output;
    LogTrace::Log log(LogTrace::Log::cm);
    const int result = command::runLogged(log, step.log, text, output, error, report);
    report.printed(std::move(output));
    return result;
}

int checkOut(CMAddMember &operation, const CString &directory, CMDiagnosticList &diags, OutcomeReport &report) {
    static const DirectoryStep step{"CheckOut",
                                    {.source = source,
                                     .before = "Executing the following command to check out the directory: ",
                                     .after = "Check out directory command returned the following: "}};
    // Required: the directory replaces the label.
    // Test: AddMemberByDirectory.PlaceholdersAreReplacedEverywhereAndOtherNamesStay.
    return runStep(operation, step, {{"$mode", CString()}, {"$LabelPart", directory}}, diags, report);
}

int addFile(CMAddMember &operation, const CString &filePath, CMDiagnosticList &diags, OutcomeReport &report) {
    static const DirectoryStep step{keys::addInDirectory,
                                    {.source = source,
                                     .before = "Executing the following command to add the file ",
                                     .after = "Add member command returned the following: "}};
    return runStep(operation, step, {{"$UnitPath", filePath}}, diags, report);
}

int checkIn(CMAddMember &operation, const CString &directory, CMDiagnosticList &diags, OutcomeReport &report) {
    static const DirectoryStep step{"CheckIn",
                                    {.source = source,
                                     .before = "Executing the following command to check in the directory: ",
                                     .after = "Check in directory command returned the following: "}};
    // Required: no comment, even if the caller's arguments contain one.
    // Test: AddMemberByDirectory.TheCallersArgumentsAreNotUsed.
    return runStep(operation, step, {{"$LogPart", CString("-nc")}, {"$UnitPath", directory}}, diags, report);
}

/// Owns the lists of the map.
class DirectoryMap {
  public:
    DirectoryMap() = default;
    ~DirectoryMap() {
        for (const auto &[directory, units] : map) {
            const std::unique_ptr<CMUnitList> owned(units);
        }
    }
    DirectoryMap(const DirectoryMap &) = delete;
    DirectoryMap &operator=(const DirectoryMap &) = delete;

    CMAddMember::UnitsByDirectory map{10};
};

} // namespace

void CMAddMember::groupUnitsByPersistAs(CMUnitList &units, UnitsByDirectory &map) {
    std::unordered_map<const CMUnitList *, std::unordered_set<const IUnit *>> filed;
    for (IUnit *const unit : units) {
        if (unit == nullptr) {
            continue;
        }
        CString directory;
        CString file;
        CString extension;
        ParseToDirFileNameAndExtension(unit->getFullFileName(), directory, file, extension);
        CMUnitList *&list = map[directory.GetString()];
        if (list == nullptr) {
            list = std::make_unique<CMUnitList>(10).release();
        }
        const auto [known, isFirst] = filed.try_emplace(list);
        if (isFirst) {
            known->second.insert(list->begin(), list->end());
        }
        if (known->second.insert(unit).second) {
            list->AddTail(unit);
        }
    }
}

int CMAddMember::checkOutDirectory(const CString &directory, CMArgumentList & /*args*/, CMDiagnosticList &diags) {
    OutcomeReport report(directory);
    const int result = checkOut(*this, directory, diags, report);
    report.send();
    return result;
}

int CMAddMember::addMemberWithoutCheckInCheckOutDirectory(const CString &filePath, CMArgumentList & /*args*/,
                                                          CMDiagnosticList &diags) {
    OutcomeReport report(filePath);
    const int result = addFile(*this, filePath, diags, report);
    report.send();
    return result;
}

int CMAddMember::checkInDirectory(const CString &directory, CMArgumentList & /*args*/, CMDiagnosticList &diags) {
    OutcomeReport report(directory);
    const int result = checkIn(*this, directory, diags, report);
    report.send();
    return result;
}

int CMAddMember::addByDirectories(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    DirectoryMap directories;
    groupUnitsByPersistAs(units, directories.map);
    int result = 0;
    for (const auto &[directory, list] : directories.map) {
        OutcomeReport ofDirectory(directory);
        if (!ofDirectory.mayBegin()) {
            continue;
        }
        result = checkOut(*this, directory, diags, ofDirectory);
        ofDirectory.send();
        for (IUnit *const unit : *list) {
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            if (result == 0) {
                report.fail(CMOutcome::Kind::failed, resources::format(resources::Text::outcomeNoDirectory,
                                                                       {directory, ofDirectory.reason()}));
            } else {
                addFile(*this, unit->getFullFileName(), diags, report);
            }
            report.send();
        }
        if (result != 0) {
            // Required: the results of the files don't count.
            // Test: AddMemberByDirectory.AFailedAddKeepsTheOthersAndTheCheckIn.
            result = checkInDirectory(directory, args, diags);
        }
    }
    return result;
}

int CMAddMember::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    if (!units.IsEmpty() && CMFacade::saveCallbackFunc() != nullptr) {
        for (IUnit *const unit : units) {
            if (unit != nullptr) {
                unit->setModified(1, true); // so that each file is written and the tool has something to add
            }
        }
        core::saveModel();
    }
    if (isOncePerDirectory()) {
        return addByDirectories(units, args, diags);
    }
    Run run(args, error);
    run.workAll(units);
    return run.result();
}
