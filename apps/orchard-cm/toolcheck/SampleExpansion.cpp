#include "apps/orchard-cm/toolcheck/SampleExpansion.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/IUnit.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/model/Unresolved.h"
#include "apps/orchard-cm/toolcheck/KnownKeys.h"
#include "apps/orchard-cm/toolcheck/SamplePlaces.h"
#include "orchard/storage/NewProject.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

namespace orchard_cm {

namespace {

namespace fs = std::filesystem;

constexpr auto sampleComment = "a comment";

/// Keeps a sample project open as long as the object exists. Its path contains a blank, for templates without
/// quotes.
class Sample {
  public:
    explicit Sample(const std::string &tool) {
        std::string name = (fs::temp_directory_path() / "orchard check XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw Failure(ExitCode::failed,
                          "no directory can be created for a sample: " + std::string(std::strerror(errno)));
        }
        directory_ = name;
        const auto made = orchard::createSampleProject((directory_ / "sample").string(), tool);
        const auto opened = made ? orchard::openProject(made.projectFile) : orchard::OpenResult();
        if (!opened) {
            discard();
            throw Failure(ExitCode::failed, "no sample project can be created: " +
                                                (made ? opened.problems.front().message() : made.error));
        }
        project_ = opened.project;
    }
    ~Sample() {
        orchard::closeProject(project_);
        discard();
    }
    Sample(const Sample &) = delete;
    Sample &operator=(const Sample &) = delete;

    [[nodiscard]] IUnit &unit() const { return *orchard::findUnit(*project_, "Pump").unit; }
    [[nodiscard]] IUnit &file() const { return *orchard::findUnit(*project_, "wiring.txt").unit; }
    [[nodiscard]] IUnit &directory() const { return *orchard::findUnit(*project_, "Control").unit; }
    [[nodiscard]] std::string path() const { return directory_.string(); }

  private:
    void discard() {
        std::error_code ignored;
        fs::remove_all(directory_, ignored);
    }
    fs::path directory_;
    IProject *project_ = nullptr;
};

/// What the library or a dialog passes to an operation's template besides the archive.
struct Given {
    bool mode = false;
    bool label = false;
    bool log = false;
    bool target = false;
};

Given givenTo(std::string_view key) {
    if (key == IPN::CMCheckIn) {
        return {.mode = true, .label = true, .log = true};
    }
    if (key == IPN::CMAddMember || key == keys::addControlledFile) {
        return {.log = true};
    }
    if (key == IPN::CMCheckOut || key == IPN::CMCheckOutFromArchive || key == IPN::CMListArchive) {
        return {.mode = true, .label = true};
    }
    if (key == IPN::CMLockItem) {
        return {.label = true};
    }
    return {};
}

bool hasUnit(std::string_view key) {
    return key != IPN::CMConnectToCMRepository && key != keys::postConnect && key != IPN::CMListArchive;
}

/// Adds the arguments of a call: only the required ones, or with `full` everything that a user can specify.
void give(TemplateArguments &arguments, std::string_view key, bool full) {
    Given given = givenTo(key);
    if (full && (key == IPN::CMFetch || key == IPN::CMFetchFromArchive)) {
        given = {.mode = true, .label = true, .target = true};
    }
    if (given.mode) {
        arguments.addMode(full);
    }
    if (given.label) {
        arguments.addLabel(full ? "1.1" : "");
    }
    if (given.log) {
        arguments.addLog(full ? sampleComment : "");
    }
    if (given.target) {
        arguments.addTargetDirectory("/elsewhere");
    }
    arguments.addArchive();
}

class Expander {
  public:
    Expander(const Sample &sample, CString renameTemplate, SampleExpansions &result)
        : sample_(sample), renameTemplate_(std::move(renameTemplate)), result_(result) {}

    void expand(const SetEntry &entry, std::string_view key, bool full) {
        const IUnit &unit = unitFor(key);
        const CMArchiveItem item(unit.getFullFileName(), "", CMArchiveItem::unknown, "", "");
        TemplateArguments arguments;
        give(arguments, key, full);
        if (key.ends_with("FromArchive")) {
            arguments.addArchiveItem(item);
        } else if (hasUnit(key)) {
            arguments.addUnit(unit);
        }
        const CString source = withPlaces(entry.value, key, renameTemplate_, unit);
        CString command;
        CString error;
        const bool done = CMProperty::Expand(source, arguments.list(), command, error, false) != 0;
        if (done) {
            checkQuotes(entry, command.str());
        } else {
            reportUnresolved(entry, command.str(), arguments);
        }
        result_.commands.push_back({entry.key, command.str(), full});
    }

  private:
    [[nodiscard]] const IUnit &unitFor(std::string_view key) const {
        if (key == keys::addControlledFile) {
            return sample_.file();
        }
        return key.ends_with("Directory") ? sample_.directory() : sample_.unit();
    }
    void report(const SetEntry &entry, std::string text) {
        for (const Finding &finding : result_.findings) {
            if (finding.key == entry.key && finding.text == text) {
                return;
            }
        }
        result_.findings.push_back({entry.key, std::move(text), entry.place});
    }
    void reportUnresolved(const SetEntry &entry, const std::string &half, TemplateArguments &arguments) {
        const auto unresolved = findUnresolved(half, arguments.list());
        if (unresolved.chain.empty()) {
            report(entry, "a name in a condition could not be resolved; see it with 'orchard-cm expand --trace'");
            return;
        }
        const auto &chain = unresolved.chain;
        report(entry,
               whatFailed(unresolved) +
                   (chain.size() > 1 ? ", which is in the value of '" + chain[chain.size() - 2] + "'" : ""));
    }
    void checkQuotes(const SetEntry &entry, const std::string &command) {
        if (!isInQuotes(command, sample_.path())) {
            report(entry, "a path is outside quotes in: " + command);
        }
        if (!isInQuotes(command, sampleComment)) {
            report(entry, "the comment is outside quotes in: " + command);
        }
    }

    const Sample &sample_;
    CString renameTemplate_;
    SampleExpansions &result_;
};

void expandAll(Expander &expander, const std::vector<SetEntry> &entries, bool full) {
    for (const KnownKey &key : knownKeys()) {
        const SetEntry *const entry = entryOf(entries, key.name);
        const bool isCommand = key.kind == KeyKind::command || key.kind == KeyKind::optionalCommand;
        if (isCommand && entry != nullptr && !entry->value.empty()) {
            expander.expand(*entry, key.name, full);
        }
    }
}

} // namespace

SampleExpansions expandForSample(const std::string &tool, const std::vector<SetEntry> &entries) {
    const Sample sample(tool);
    SampleExpansions result;
    const SetEntry *const rename = entryOf(entries, keys::rename);
    Expander expander(sample, rename == nullptr ? CString() : CString(rename->value), result);
    static_cast<void>(CMArchive::setMainArchive(""));
    expandAll(expander, entries, false);
    static_cast<void>(CMArchive::setMainArchive("/archive"));
    expandAll(expander, entries, true);
    if (const SetEntry *const header = entryOf(entries, IPN::CMHeaderFile);
        header != nullptr && !header->value.empty() && CMTraitFacade::getDefaultHeader().IsEmpty()) {
        result.findings.push_back(
            {header->key, "the file " + header->value + " can't be read, or is empty", header->place});
    }
    return result;
}

} // namespace orchard_cm
