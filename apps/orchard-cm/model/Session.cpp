#include "apps/orchard-cm/model/Session.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/platform/Files.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "orchard/storage/UnitSearch.h"

#include <algorithm>
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
                      "Name the project with -p PROJECT, or create one with 'orchard-cm new'.");
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

void Session::save() {
    const auto problems = orchard::saveProject(&project());
    if (!problems.empty()) {
        throw Failure(ExitCode::failed, "not everything could be saved:\n" + messageOf(problems),
                      std::string("The files on disk are unchanged.") +
                          (std::ranges::any_of(problems, isAboutReadOnlyFile)
                               ? " Check a read-only file out with --lock first."
                               : ""));
    }
}

void Session::saveIfModified() {
    const auto units = orchard::workspaceUnits(project());
    if (std::ranges::any_of(units, [](const orchard::UnitRow &row) { return row.unit->isModified(); })) {
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
