#include "CM/host/LogTrace.h"
#include "CM/host/Reload.h"
#include "CM/platform/Files.h"
#include "orchard/model/Model.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/UnitDocument.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

using namespace orchard;

namespace {

/// Returns the code files with their own file that have a fragment for the unit or for an element in its file.
std::vector<UnitElement *> informationUnitsOf(const UnitElement &unit) {
    std::vector<UnitElement *> found;
    std::unordered_set<const UnitElement *> seen{&unit};
    std::vector<const Element *> open{&unit};
    while (!open.empty() && unit.model() != nullptr) {
        const Element &element = *open.back();
        open.pop_back();
        for (UnitElement *const file : unit.model()->filesObserving(element.id())) {
            UnitElement *const holder = file->saveUnit();
            if (holder != nullptr && holder != unit.saveUnit() && seen.insert(holder).second) {
                found.push_back(holder);
            }
        }
        for (const auto &child : element.children()) {
            const UnitElement *const inner = child->asUnit();
            if (inner == nullptr || !inner->hasFile()) {
                open.push_back(child.get());
            }
        }
    }
    return found;
}

const UnitElement *unitWithFile(const CString &path) {
    const Model *const model = orchard::Workspace::instance().active();
    return model == nullptr ? nullptr : model->findByFile(path);
}

void appendInformation(const UnitElement &unit, CStringList &files) {
    for (const UnitElement *const information : informationUnitsOf(unit)) {
        files.AddTail(information->fullFileName());
    }
}

/// Returns the files of the units that a unit file lists. Reads the file, which may be newer than the model.
void appendListed(const std::string &path, CStringList &files) {
    FileText file;
    UnitDocument document;
    Fault fault;
    if (file.read(path) != FileRead::done || !document.parse(file.text, fault)) {
        return;
    }
    // A substitute for the unit, in the directory of its file.
    const std::unique_ptr<Element> unit = makeElement(document.kind());
    unit->asUnit()->setFileName(fileOfPath(path));
    unit->asUnit()->setElsewhere(path);
    std::vector<UnitElement *> listed;
    if (!document.fill(*unit->asUnit(), nullptr, listed, fault)) {
        return;
    }
    for (const UnitElement *const inner : listed) {
        files.AddTail(inner->fullFileName());
    }
}

/// Returns whether a directory belongs to a CM tool and not to the model.
bool belongsToTool(const std::filesystem::path &directory) {
    const std::string name = directory.filename().string();
    return name.starts_with('.') || name == "RCS" || name == "CVS";
}

void appendFilesIn(const std::string &directory, bool recursive, CStringList &files) {
    std::vector<std::string> found;
    const auto take = [&](const std::filesystem::directory_entry &entry) {
        std::error_code error;
        if (entry.is_regular_file(error) && !entry.path().filename().string().starts_with('.')) {
            found.push_back(entry.path().string());
        }
    };
    // Directory by directory, so that an unreadable one loses only its own files.
    std::vector<std::filesystem::path> open{directory};
    while (!open.empty()) {
        const std::filesystem::path place = std::move(open.back());
        open.pop_back();
        std::error_code error;
        for (std::filesystem::directory_iterator at(place, error), end; !error && at != end; at.increment(error)) {
            std::error_code ignored;
            if (recursive && at->is_directory(ignored) && !at->is_symlink(ignored) && !belongsToTool(at->path())) {
                open.push_back(at->path());
            }
            take(*at);
        }
        if (error) {
            LogTrace::Log(LogTrace::Log::cm)
                .Min("orchard/reload", 0, "can't list " + place.string() + ": " + error.message());
        }
    }
    std::ranges::sort(found);
    for (const std::string &path : found) {
        files.AddTail(path);
    }
}

} // namespace

void ATMRecursiveHelper::getListOFFilesIn(const CString &directory, CStringList &files, int recursive) {
    const std::string path = normalPath(directory, platform::currentDirectory().view());
    if (platform::isDirectory(path)) {
        appendFilesIn(path, recursive != 0, files);
        return;
    }
    appendListed(path, files);
    const UnitElement *const unit = recursive == 0 ? nullptr : unitWithFile(path);
    if (unit != nullptr) {
        appendInformation(*unit, files);
    }
}

void ATMRecursiveHelper::getListOFFilesIn(const IUnit *unit, CStringList &files, int recursive, int information) {
    const Element *const root = Element::of(unit);
    if (root == nullptr) {
        return;
    }
    std::unordered_set<std::string> seen;
    const auto add = [&](const UnitElement &one) {
        if (std::string file = one.fullFileName(); seen.insert(file).second) {
            files.AddTail(file);
        }
    };
    visitSubtree<const Element>(*root, [&](const Element &element) {
        const UnitElement *const one = element.asUnit();
        if (one == nullptr || !one->hasFile() || (recursive == 0 && one != root)) {
            return;
        }
        add(*one);
        if (information != 0) {
            for (const UnitElement *const other : informationUnitsOf(*one)) {
                add(*other);
            }
        }
    });
}

void ATMRecursiveHelper::getListOFInformationUnits(const IUnit *unit, CList<IUnit *, IUnit *> &units) {
    const Element *const element = Element::of(unit);
    if (element == nullptr || element->asUnit() == nullptr) {
        return;
    }
    for (UnitElement *const information : informationUnitsOf(*element->asUnit())) {
        units.AddTail(&information->unit());
    }
}

void ATMRecursiveHelper::getListOFInformationFiles(const CString &directory, CStringList &files) {
    if (const UnitElement *const unit = unitWithFile(directory)) {
        appendInformation(*unit, files);
    }
}
