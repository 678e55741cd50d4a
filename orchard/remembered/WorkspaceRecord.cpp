#include "orchard/remembered/WorkspaceRecord.h"

#include "orchard/model/Model.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/UnitSearch.h"

#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace orchard {

namespace {

/// A record contains what this version of the program read from the files; another version may read them
/// differently.
constexpr std::string_view mark = "orchard workspace 1 " ORCHARD_VERSION "\n";

/// No trusted file system keeps times in larger steps.
constexpr std::chrono::seconds longestStep{2};

/// Another standard library may compute another hash; the record then counts as damaged.
std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

FileState stateOf(int directory, const char *path) {
    struct stat state {};
    return ::fstatat(directory, path, &state, 0) == 0 ? FileState::of(state) : FileState();
}

/// A directory that relative paths are resolved against.
class Directory {
  public:
    explicit Directory(const char *path) : fd_(::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC)) {}
    ~Directory() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;
    [[nodiscard]] int fd() const { return fd_; }

  private:
    int fd_;
};

/// Whether the file was last changed long enough before the opening.
bool isSettled(const FileState &state, std::chrono::system_clock::time_point openedAt) {
    const std::int64_t before =
        std::chrono::duration_cast<std::chrono::nanoseconds>((openedAt - longestStep).time_since_epoch()).count();
    return state.isKnown() && state.modified < before && state.changed < before;
}

/// The active component and the units around it, which determine properties.
std::vector<ElementId> neededUnits(const Model &model) {
    std::vector<ElementId> needed;
    for (const Element *at = model.component(); at != nullptr; at = at->owner()) {
        needed.push_back(at->id());
    }
    return needed;
}

/// Returns false if the unit could not be restored from its file.
bool write(RecordWriter &writer, const UnitElement &unit, std::chrono::system_clock::time_point openedAt) {
    const bool loaded = !unit.is(UnitElement::stub);
    const bool fits = loaded ? isSettled(unit.fileState(), openedAt) : unit.is(UnitElement::stubByChoice);
    if (!fits || unit.modified()) {
        return false;
    }
    const UnitRow row = unitRow(const_cast<UnitElement &>(unit).unit());
    writer.plain(unit.kind());
    writer.plain(row.state);
    writer.text(row.name);
    writer.text(row.path);
    writer.text(row.file);
    writer.text(unit.header());
    writer.plain(loaded ? unit.fileState() : FileState());
    return true;
}

} // namespace

std::optional<WorkspaceRecord> WorkspaceRecord::of(const IProject &project,
                                                   std::chrono::system_clock::time_point openedAt) {
    const Model &model = *Element::of(&project)->model();
    RecordWriter units;
    std::uint64_t count = 0;
    bool fits = true;
    visitSubtree<const Element>(model.project(), [&](const Element &element) {
        if (const UnitElement *const unit = element.asUnit(); fits && unit != nullptr && unit->hasFile()) {
            fits = write(units, *unit, openedAt);
            ++count;
        }
    });
    const FileState projectState = stateOf(AT_FDCWD, model.projectFile().c_str());
    if (!fits || !FileState::keepsChangeTimes(model.unitsDirectory().c_str()) ||
        !isSettled(projectState, openedAt)) {
        return std::nullopt;
    }
    RecordWriter body;
    body.text(model.projectFile());
    body.plain(projectState);
    body.text(model.unitsDirectory());
    const std::vector<ElementId> needed = neededUnits(model);
    body.plain(static_cast<std::uint64_t>(needed.size()));
    for (const ElementId &id : needed) {
        body.plain(id);
    }
    body.plain(count);
    body.written() += units.written();
    RecordWriter whole;
    whole.written() = mark;
    whole.plain(hashOf(body.written()));
    whole.written() += body.written();
    return from(std::move(whole.written()));
}

std::optional<WorkspaceRecord> WorkspaceRecord::from(std::string text) {
    WorkspaceRecord record(std::move(text));
    if (!record.readHead()) {
        return std::nullopt;
    }
    return record;
}

bool WorkspaceRecord::readHead() {
    if (!text_.starts_with(mark)) {
        return false;
    }
    RecordReader reader(std::string_view(text_).substr(mark.size()));
    const auto hash = reader.plain<std::uint64_t>();
    if (!reader.isComplete() || hash != hashOf(reader.rest())) {
        return false;
    }
    projectFile_ = reader.text();
    projectState_ = reader.plain<FileState>();
    unitsDirectory_ = reader.text();
    for (auto left = reader.plain<std::uint64_t>(); left > 0 && reader.isComplete(); --left) {
        needed_.insert(reader.plain<ElementId>());
    }
    unitCount_ = reader.plain<std::uint64_t>();
    unitsAt_ = text_.size() - reader.rest().size();
    return reader.isComplete();
}

RecordedUnit WorkspaceRecord::nextUnit(RecordReader &reader) {
    RecordedUnit unit;
    unit.kind = reader.plain<Kind>();
    unit.state = reader.plain<UnitState>();
    unit.name = reader.text();
    unit.path = reader.text();
    unit.file = reader.text();
    unit.header = reader.text();
    unit.fileState = reader.plain<FileState>();
    return unit;
}

bool WorkspaceRecord::isUpToDate(const OpenOptions &options) const {
    constexpr std::size_t step = 256;
    if (stateOf(AT_FDCWD, projectFile_.c_str()) != projectState_) {
        return false;
    }
    const Directory directory(unitsDirectory_.c_str());
    std::string path;
    std::size_t done = 0;
    return visitUnits([&](const RecordedUnit &unit) {
        if (++done % step == 0) {
            if (options.progress) {
                options.progress(done, unitCount_);
            }
            if (options.cancelled && options.cancelled()) {
                return false;
            }
        }
        path = unit.file;
        return !unit.fileState.isKnown() || stateOf(directory.fd(), path.c_str()) == unit.fileState;
    });
}

} // namespace orchard
