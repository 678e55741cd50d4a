#include "orchard/remembered/RememberedWorkspace.h"

#include "CM/platform/AtomicFile.h"
#include "orchard/base/UserDirectories.h"
#include "orchard/model/Paths.h"
#include "orchard/model/UnitElement.h"
#include "orchard/remembered/WorkspaceRecord.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/PartOpening.h"
#include "orchard/storage/UnitSearch.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>
#include <vector>

namespace orchard {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestRecord = std::size_t{4} << 30U;

/// Records are large and can be made again.
constexpr std::size_t mostRecords = 16;

/// Removes all but the newest files of the directory, including drafts of programs that were ended.
void removeOldest(const fs::path &directory) {
    std::vector<std::pair<fs::file_time_type, fs::path>> files;
    std::error_code error; // files that can't be seen or removed stay
    for (fs::directory_iterator at(directory, error), end; !error && at != end; at.increment(error)) {
        std::error_code gone;
        const auto time = at->last_write_time(gone);
        if (!gone && at->is_regular_file(gone)) {
            files.emplace_back(time, at->path());
        }
    }
    std::ranges::sort(files, std::greater<>());
    for (std::size_t at = mostRecords; at < files.size(); ++at) {
        fs::remove(files[at].second, error);
    }
}

/// The record file of a project, named by the project's full path. Empty without a cache directory.
fs::path recordFileOf(std::string_view projectFile) {
    const fs::path directory = cacheDirectory();
    if (directory.empty()) {
        return {};
    }
    const std::size_t hash = std::hash<std::string_view>()(projectFile);
    return directory / "workspaces" / (std::string(fileOfPath(projectFile)) + '-' + std::to_string(hash));
}

} // namespace

struct RememberedWorkspace::State {
    WorkspaceRecord record;
    IProject *project;
};

RememberedWorkspace::RememberedWorkspace(std::unique_ptr<State> state) : state_(std::move(state)) {}
RememberedWorkspace::~RememberedWorkspace() { closeProject(state_->project); }

void RememberedWorkspace::keep(const IProject &project, std::chrono::system_clock::time_point openedAt) {
    const fs::path file = recordFileOf(projectFileOf(project));
    const auto record = file.empty() ? std::nullopt : WorkspaceRecord::of(project, openedAt);
    if (!record) {
        return;
    }
    std::error_code ignored; // a record that can't be written is made again the next time
    const fs::path directory = file.parent_path();
    fs::create_directories(directory, ignored);
    // A record describes the model, which others may not be allowed to read.
    fs::permissions(directory, fs::perms::owner_all, ignored);
    static_cast<void>(platform::writeWholeFile(file.string(), record->text()));
    removeOldest(directory);
}

std::unique_ptr<RememberedWorkspace> RememberedWorkspace::open(const std::string &path,
                                                               const OpenOptions &options) {
    const std::string projectFile = projectFileAt(path);
    const fs::path file = projectFile.empty() ? fs::path() : recordFileOf(projectFile);
    FileText text;
    if (file.empty() || text.read(file.string(), largestRecord) != FileRead::done) {
        return nullptr;
    }
    auto record = WorkspaceRecord::from(std::move(text.text));
    if (!record || record->projectFile() != projectFile || !record->isUpToDate(options)) {
        return nullptr;
    }
    const OpenResult opened = openPart(projectFile, record->needed());
    if (!opened) {
        return nullptr;
    }
    return std::unique_ptr<RememberedWorkspace>(
        new RememberedWorkspace(std::make_unique<State>(State{std::move(*record), opened.project})));
}

void RememberedWorkspace::visitUnits(const std::function<void(const UnitRow &)> &visit) const {
    const std::unique_ptr<Element> element = makeElement(Kind::classKind);
    UnitElement &unit = *element->asUnit();
    unit.setFileName("unit"); // so that the unit returns its own header, not an owner's
    UnitRow row;
    row.unit = &unit.unit();
    state_->record.visitUnits([&](const RecordedUnit &recorded) {
        unit.setHeader(recorded.header);
        row.name = recorded.name;
        row.path = recorded.path;
        row.type = traitsOf(recorded.kind).displayName;
        row.file = recorded.file;
        row.state = recorded.state;
        visit(row);
        return true;
    });
}

} // namespace orchard
