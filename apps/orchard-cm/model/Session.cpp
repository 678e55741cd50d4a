#include "apps/orchard-cm/model/Session.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/platform/Files.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "orchard/remembered/RememberedWorkspace.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace orchard_cm {

namespace {

std::string messageOf(const orchard::Problems &problems) {
    std::string text;
    for (const auto &problem : problems) {
        text += (text.empty() ? "" : "\n") + problem.message();
    }
    return text;
}

bool isAboutReadOnlyFile(const orchard::Problem &problem) {
    return platform::fileExists(problem.file) && !platform::hasWritePermission(problem.file);
}

/// The way out of a unit file that can't be read.
std::string hintFor(const orchard::Problems &problems) {
    const bool aboutUnit = std::ranges::any_of(problems, [](const orchard::Problem &problem) {
        const auto extension = std::filesystem::path(problem.file).extension();
        return problem.line > 0 && extension != ".orp" && extension != ".ory" && extension != ".toml";
    });
    return aboutUnit ? "Mend the file, or move it away: its unit is then known as one that is not loaded, and "
                       "'orchard-cm checkout' brings it back out of the archive."
                     : std::string();
}

} // namespace

Session::Session(const GlobalOptions &options, Output &output)
    : options_(options), output_(output), setup_(std::make_unique<HostSetup>(options, output, journal_)) {
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
    if (!options_.project.empty()) {
        const std::string withExtension = options_.project + ".orp";
        const bool lacksExtension =
            !std::filesystem::exists(options_.project) && std::filesystem::exists(withExtension);
        return lacksExtension ? withExtension : options_.project;
    }
    const std::string here = std::filesystem::current_path().string();
    const auto files = orchard::projectFilesIn(here);
    if (files.empty()) {
        throw Failure(ExitCode::usage, "no project is named, and the current directory holds none (*.orp)",
                      "Name the project with -p PROJECT, or make one with 'orchard-cm new'.");
    }
    if (files.size() > 1) {
        Failure failure(ExitCode::usage, "no project is named, and the current directory holds several",
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

void Session::open() {
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

void Session::visitUnits(const std::function<void(const orchard::UnitRow &)> &visit) {
    const bool isFresh = project_ == nullptr;
    if (isFresh && visitRemembered(visit)) {
        return;
    }
    const auto openedAt = std::chrono::system_clock::now();
    const auto rows = orchard::workspaceUnits(project());
    constexpr std::size_t large = 1000; // units; fewer are read at once
    if (isFresh && rows.size() >= large && CMProperty::getUseSCCtool() == 0) {
        orchard::RememberedWorkspace::keep(project(), openedAt);
    }
    std::ranges::for_each(rows, visit);
}

bool Session::visitRemembered(const std::function<void(const orchard::UnitRow &)> &visit) {
    const auto remembered = orchard::RememberedWorkspace::open(projectFile(), openOptions());
    output_.status().clear();
    if (remembered == nullptr) {
        return false;
    }
    if (CMProperty::getUseSCCtool() != 0) {
        remembered->forget(); // at opening the provider has to be asked for the states of the units
        return false;
    }
    remembered->visitUnits(visit);
    return true;
}

void Session::save() {
    const auto problems = orchard::saveProject(&project());
    if (!problems.empty()) {
        throw Failure(ExitCode::failed, "not everything could be saved:\n" + messageOf(problems),
                      std::string("What is on disk is as it was before.") +
                          (std::ranges::any_of(problems, isAboutReadOnlyFile)
                               ? " Where a file is read-only, check it out with --lock first."
                               : ""));
    }
}

void Session::saveIfModified() {
    const auto units = orchard::workspaceUnits(project());
    if (std::ranges::any_of(units, [](const orchard::UnitRow &row) { return row.unit->isModified(); })) {
        save();
    }
}

Journal &Session::startJournal(std::size_t expectedRuns, bool keepsOutput) {
    journal_.begin(keepsOutput);
    setup_->expectRuns(expectedRuns);
    return journal_;
}

WindowHold::WindowHold(Session &session) : session_(session) { session_.setup().setWindow(&kept_); }

WindowHold::~WindowHold() { session_.setup().setWindow(nullptr); }

void WindowHold::release() {
    session_.setup().setWindow(nullptr);
    session_.setup().window() << kept_.str() << std::flush;
    kept_.str({});
}

} // namespace orchard_cm
