#include "apps/orchard-cm/model/Session.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/host/OrId.h"
#include "CM/platform/Files.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "orchard/change/Recovery.h"
#include "orchard/storage/UnitSearch.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <utility>

namespace orchard_cm {

namespace {

std::string messageOf(const orchard::Problems &problems) {
    std::string text;
    for (const auto &problem : problems) {
        text += (text.empty() ? "" : "\n") + problem.message();
    }
    return text;
}

std::string inBrackets(const std::string &command) { return command.empty() ? "" : " (" + command + ")"; }

bool isAboutReadOnlyFile(const orchard::Problem &problem) {
    return platform::fileExists(problem.file) && !platform::hasWritePermission(problem.file);
}

/// Returns what the user can do about a unit file that can't be read.
std::string hintFor(const orchard::Problems &problems) {
    const bool aboutUnit = std::ranges::any_of(problems, [](const orchard::Problem &problem) {
        const auto extension = std::filesystem::path(problem.file).extension();
        return problem.line > 0 && extension != ".orp" && extension != ".ory" && extension != ".toml";
    });
    return aboutUnit ? "Fix the file, or move it away: its unit is then not loaded, and 'orchard-cm checkout' "
                       "restores it from the archive."
                     : std::string();
}

} // namespace

Session::Session(const GlobalOptions &options, Output &output)
    : options_(options), output_(output), setup_(std::make_unique<HostSetup>(options, output)) {
    setup_->onSave([this] { save(); });
}

Session::~Session() = default;

IProject &Session::project() {
    if (project_ == nullptr) {
        open();
    }
    return *project_;
}

std::string Session::projectFile() const {
    if (const std::string &named = named_.empty() ? options_.project : named_; !named.empty()) {
        const std::string withExtension = named + ".orp";
        return !std::filesystem::exists(named) && std::filesystem::exists(withExtension) ? withExtension : named;
    }
    const std::string here = std::filesystem::current_path().string();
    const auto files = orchard::projectFilesIn(here);
    if (files.empty()) {
        throw Failure(ExitCode::usage, "no project is named, and the current directory contains none (*.orp)",
                      "Name the project with -p PROJECT, or create one with 'orchard-cm new'.");
    }
    if (files.size() > 1) {
        Failure failure(ExitCode::usage, "no project is named, and the current directory contains several",
                        "Name one of them with -p PROJECT.");
        std::vector<std::string> names;
        for (const auto &file : files) {
            names.push_back(std::filesystem::path(file).filename().string());
        }
        throw std::move(failure).meaning(std::move(names));
    }
    return files.front();
}

orchard::OpenOptions Session::openOptions() {
    orchard::OpenOptions options;
    options.progress = [this](std::size_t done, std::size_t known) {
        output_.status().show("Reading units: " + std::to_string(done) + " of " + std::to_string(known));
    };
    options.cancelled = [] { return isInterrupted(); };
    options.warning = [this](const orchard::Problem &problem) {
        output_.message(Output::Kind::warning, problem.message());
    };
    return options;
}

void Session::tellUnfinished() {
    if (hasTold_) {
        return;
    }
    const orchard::UnfinishedChange change = orchard::unfinishedChange(projectFile());
    hasTold_ = !change.file.empty();
    if (hasTold_) {
        output_.message(Output::Kind::warning,
                        "a change of the project is not finished" + inBrackets(change.command) +
                            ", so a unit may be missing or not loaded; see 'orchard-cm recover'");
    }
}

void Session::settle() {
    finished_.clear();
    const std::string file = projectFile();
    if (orchard::unfinishedChange(file).file.empty()) {
        return;
    }
    if (project_ != nullptr) {
        orchard::closeProject(std::exchange(project_, nullptr));
    }
    const orchard::Recovered recovered = orchard::recover(file, orchard::Recover::byWhatIsThere);
    if (recovered.outcome == orchard::Recovered::Outcome::failed) {
        throw Failure(ExitCode::failed,
                      "an earlier change of the project" + inBrackets(recovered.command) +
                          " can't be finished or taken back:\n" + messageOf(recovered.problems),
                      "Remove the cause and repeat the command; see 'orchard-cm recover'.");
    }
    for (const auto &problem : recovered.problems) {
        output_.message(Output::Kind::warning, problem.message());
    }
    const bool isFinished = recovered.outcome == orchard::Recovered::Outcome::finished;
    finished_ = isFinished ? recovered.command : std::string();
    output_.message(Output::Kind::warning, "an earlier change of the project was interrupted" +
                                               inBrackets(recovered.command) +
                                               (isFinished ? "; it is finished now" : "; it is taken back now"));
}

bool Session::hasFinished(const std::string &command) const { return !command.empty() && command == finished_; }

void Session::open() {
    tellUnfinished();
    lock().beginReading();
    const auto result = orchard::openProject(projectFile(), openOptions());
    output_.status().clear();
    if (result.cancelled) {
        throw Failure(ExitCode::interrupted, "interrupted while the project was read");
    }
    if (!result) {
        throw Failure(ExitCode::projectUnread, "the project can't be read:\n" + messageOf(result.problems),
                      hintFor(result.problems));
    }
    project_ = result.project;
    theCMFacade.RefreshCMStatus();
}

orchard::ProjectLock &Session::lock() {
    if (!lock_) {
        lock_.emplace(orchard::projectFileAt(projectFile()), options_.commandLine);
    }
    return *lock_;
}

orchard::LockWaiting Session::waiting() {
    return {std::chrono::seconds(options_.wait), [] { return isInterrupted(); },
            [this](const std::string &holders) { output_.status().show("Waiting for " + holders); }};
}

/// Throws unless the lock is held, or can't be.
void Session::require(orchard::ProjectLock::Answer answer) {
    using enum orchard::ProjectLock::Answer;
    output_.status().clear();
    if (answer == cancelled) {
        throw Failure(ExitCode::interrupted, "interrupted while another program changed the project");
    }
    if (answer == busy) {
        const std::string holders = lock().otherHolders();
        throw Failure(ExitCode::failed,
                      "another program is changing the project" + (holders.empty() ? "" : ": " + holders),
                      "Run the command again when that has ended, or wait longer than " +
                          std::to_string(options_.wait) + " s for it with --wait SECONDS.");
    }
    if (answer == impossible && !isUnlockable_) {
        isUnlockable_ = true;
        output_.message(Output::Kind::warning, "the project can't be locked (" + lock().fault() +
                                                   "); what another program changes in the meantime may be lost");
    }
}

/// Reads the project, again if another program has changed it. One with unsaved changes is kept: saving refuses
/// the files that are not as they were read.
void Session::readAgainIfChanged() {
    if (project_ != nullptr && lock().isHeld() && lock().isChangedSinceReading() && !isModified()) {
        orchard::closeProject(std::exchange(project_, nullptr));
    }
    static_cast<void>(project());
}

ProjectHold
Session::hold(orchard::ProjectLock::Answer (orchard::ProjectLock::*how)(const orchard::LockWaiting &)) {
    if (project_ == nullptr && !platform::isRegularFile(orchard::projectFileAt(projectFile()))) {
        static_cast<void>(project()); // reports what is wrong with it
    }
    require((lock().*how)(waiting()));
    return ProjectHold(&lock());
}

ProjectHold Session::holdAlone() {
    ProjectHold held = holdUnfinished();
    settle();
    readAgainIfChanged();
    return held;
}

ProjectHold Session::holdUnfinished() { return hold(&orchard::ProjectLock::holdAlone); }

ProjectHold Session::holdUnits(const std::function<std::vector<IUnit *>()> &units) {
    if (!orchard::unfinishedChange(projectFile()).file.empty()) {
        const ProjectHold alone = holdAlone(); // settles it
    }
    ProjectHold held = hold(&orchard::ProjectLock::holdBesideOthers);
    readAgainIfChanged();
    std::vector<std::string> names;
    std::ranges::transform(units(), std::back_inserter(names),
                           [](const IUnit *unit) { return unit->getOrId().getOrIdStr().str(); });
    if (lock().isHeld()) {
        bool waited = false;
        orchard::LockWaiting noting = waiting();
        noting.waits = [&, show = noting.waits](const std::string &holders) {
            waited = true;
            show(holders);
        };
        require(lock().holdUnits(names, noting));
        if (waited) {
            readAgainIfChanged(); // only now are these units as they stay
        }
    }
    return held;
}

bool Session::isModified() {
    return std::ranges::any_of(orchard::workspaceUnits(project()),
                               [](const orchard::UnitRow &row) { return row.unit->isModified(); });
}

void Session::save() {
    const ProjectHold alone = lock().isHeld() ? ProjectHold() : hold(&orchard::ProjectLock::holdAlone);
    require(lock().holdSaving(waiting()));
    const auto problems = orchard::saveProject(&project());
    lock().releaseSaving();
    if (!problems.empty()) {
        throw Failure(ExitCode::failed, "not everything could be saved:\n" + messageOf(problems),
                      std::string("Each file named here is as it was before.") +
                          (std::ranges::any_of(problems, isAboutReadOnlyFile)
                               ? " Check a read-only file out with --lock first."
                               : ""));
    }
}

void Session::saveIfModified() {
    if (isModified()) {
        save();
    }
}

WindowHold::WindowHold(Session &session) : session_(session) { session_.setup().setWindow(&kept_); }

WindowHold::~WindowHold() { session_.setup().setWindow(nullptr); }

void WindowHold::release() {
    session_.setup().setWindow(nullptr);
    session_.setup().window() << kept_.str() << std::flush;
    kept_.str({});
}

} // namespace orchard_cm
