#include "CM/CMSupport/command/CMAddMember.h"

#include "CM/CMSupport/command/BatchSteps.h"
#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
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

// --- One command a unit.

class Run : public command::CommandRun<IUnit> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMAddMember,
                      .source = source,
                      .beforeRun = nullptr, // nothing is logged, deliberately
                      .afterRun = nullptr,
                      .guard = CMORYHandler::ORYAdd},
                     args, error) {}

  protected:
    bool isWanted(IUnit &unit) override {
        command::selectArchive(unit); // also for a unit that is then refused
        if (!CMProperty::isPre40Compatible() || dynamic_cast<const IProject *>(&unit) != nullptr) {
            return true;
        }
        const CString working = CMProperty::getWorkingDir();
        if (unit.getOwnDirectory() == working) {
            return true;
        }
        tellOutside(unit, working);
        return false;
    }

    CString templateFor(IUnit &unit) override {
        static const CString ofControlledFile("AddMember_ControlledFile");
        CString text;
        const bool hasOwn = dynamic_cast<const IEmbededFile *>(&unit) != nullptr &&
                            CMProperty::getToolPropertyValue(ofControlledFile, text, false) != 0 &&
                            !text.IsEmpty();
        return hasOwn ? ofControlledFile : CommandRun::templateFor(unit);
    }

    void followUp(IUnit &unit, CMORYHandler *guard) override {
        guard->commit();
        command::updateHeader(unit);
        command::updateMode(unit);
    }

  private:
    static void tellOutside(const IUnit &unit, const CString &working) {
        const CString text =
            resources::format(resources::Text::unitOutsideWorkingDirectory,
                              {unit.getFileName(), working, unit.getMetaClassDisplayName(), unit.getName()});
        notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault);
        IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
        if (std::ostream *const stream = manager == nullptr ? nullptr : manager->getOutputStream()) {
            *stream << text << std::endl;
        }
    }
};

// --- Each directory once.

bool isOncePerDirectory() {
    static const CString toolKey("CMTool");
    static const CString onceKey("CheckOutCheckInDirectoryOnceDuringAddToArchive");
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return false;
    }
    const IProperty *const tool = project->findProperty(IPN::CM, "General", toolKey, IProperty::inherited);
    const CString name = tool == nullptr ? CString() : tool->getValue();
    if (name.CompareNoCase("None") == 0) {
        return false;
    }
    // A missing tool counts as one without a name, deliberately.
    const IProperty *const once = project->findProperty(IPN::CM, name, onceKey, IProperty::inherited);
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
            CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(operation, false, error, diags)) {
        return 0;
    }
    CString text;
    CMProperty::getToolPropertyValue(step.property, text, false);
    CString root;
    if (text.IsEmpty() || oqGetRoot(root, error) != 1) { // the root itself isn't used, deliberately
        return 0;
    }
    for (const Placeholder &placeholder : placeholders) {
        if (!command::mayReachCommand({placeholder.text})) {
            return 0;
        }
        text.Replace(placeholder.name, placeholder.text);
    }
    CString output;
    LogTrace::Log log(LogTrace::Log::cm);
    return command::runLogged(log, step.log, text, output, error);
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
    static const DirectoryStep step{"CheckOut",
                                    {.source = source,
                                     .before = "Executing the following command to check out the directory: ",
                                     .after = "Check out directory command returned the following: "}};
    // The directory stands in the place of the label, deliberately.
    return runStep(*this, step, {{"$mode", CString()}, {"$LabelPart", directory}}, diags);
}

int CMAddMember::addMemberWithoutCheckInCheckOutDirectory(const CString &filePath, CMArgumentList & /*args*/,
                                                          CMDiagnosticList &diags) {
    static const DirectoryStep step{"AddMember_WithoutCheckOutCheckInDirectory",
                                    {.source = source,
                                     .before = "Executing the following command to add the file ",
                                     .after = "Add member command returned the following: "}};
    return runStep(*this, step, {{"$UnitPath", filePath}}, diags);
}

int CMAddMember::checkInDirectory(const CString &directory, CMArgumentList & /*args*/, CMDiagnosticList &diags) {
    static const DirectoryStep step{"CheckIn",
                                    {.source = source,
                                     .before = "Executing the following command to check in the directory: ",
                                     .after = "Check in directory command returned the following: "}};
    // Without a comment, whatever the caller's arguments hold, deliberately.
    return runStep(*this, step, {{"$LogPart", CString("-nc")}, {"$UnitPath", directory}}, diags);
}

int CMAddMember::addByDirectories(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    DirectoryMap directories;
    groupUnitsByPersistAs(units, directories.map);
    int result = 0;
    for (const auto &[directory, list] : directories.map) {
        result = checkOutDirectory(directory, args, diags);
        if (result == 0) {
            continue;
        }
        for (const IUnit *const unit : *list) {
            addMemberWithoutCheckInCheckOutDirectory(unit->getFullFileName(), args, diags);
        }
        result = checkInDirectory(directory, args, diags); // whatever became of the files, deliberately
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
        command::saveModel();
    }
    if (isOncePerDirectory()) {
        return addByDirectories(units, args, diags);
    }
    Run run(args, error);
    run.workAll(units);
    return run.result();
}
