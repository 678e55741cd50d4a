#include "orchard/model/UnitElement.h"

#include "CM/host/Messages.h"
#include "CM/platform/Files.h"
#include "orchard/model/Model.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"

#include <cstdio>
#include <sys/stat.h>
#include <utility>

namespace orchard {

struct UnitElement::Extras {
    std::string oldFileName;
    std::string elsewhere;
    std::unique_ptr<Archive> archive;
};

namespace {

const std::string empty;

} // namespace

UnitElement::UnitElement(Kind kind) : Element(kind) {}
UnitElement::~UnitElement() = default;

std::string UnitElement::ownDirectory() const {
    const UnitElement *outer = nullptr;
    for (const Element *at = owner(); at != nullptr && outer == nullptr; at = at->owner()) {
        outer = at->asUnit();
    }
    std::string base;
    if (outer != nullptr) {
        base = outer->ownDirectory();
    } else if (model() != nullptr) {
        base = model()->unitsDirectory();
    }
    if (!elsewhere().empty()) {
        const std::string file = normalPath(elsewhere(), base);
        base = directoryOfPath(file);
    } else if (!directory_.empty()) {
        base = normalPath(directory_, base);
    }
    return base;
}

std::string UnitElement::fullFileName() const {
    if (fileName_.empty()) {
        const UnitElement *const holder = saveUnit();
        return holder == nullptr ? std::string() : holder->fullFileName();
    }
    std::string path = ownDirectory();
    path += '/';
    path += fileName_;
    return path;
}

const char *UnitElement::fileExtension() const {
    const std::string_view extension = extensionOf(fileName_);
    return fileName_.c_str() + (fileName_.size() - extension.size());
}

const std::string &UnitElement::oldFileName() const { return extras_ == nullptr ? empty : extras_->oldFileName; }
const std::string &UnitElement::elsewhere() const { return extras_ == nullptr ? empty : extras_->elsewhere; }

void UnitElement::setOldFileName(std::string_view name) {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    extras_->oldFileName = name;
}

void UnitElement::setElsewhere(std::string_view path) {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    extras_->elsewhere = path;
}

bool UnitElement::isRecursive(Flag flag) const {
    for (const Element *at = this; at != nullptr; at = at->owner()) {
        if (const UnitElement *const unit = at->asUnit(); unit != nullptr && unit->is(flag)) {
            return true;
        }
    }
    return false;
}

bool UnitElement::updateHeader(bool quietly) {
    UnitElement *const holder = hasFile() ? this : saveUnit();
    return model() != nullptr && holder != nullptr &&
           model()->storage().readHeader(*holder, holder->header_, quietly);
}

void UnitElement::updateMode() {
    UnitElement *const holder = hasFile() ? this : saveUnit();
    struct stat state {};
    if (holder != nullptr && ::stat(holder->fullFileName().c_str(), &state) == 0) {
        holder->set(readOnlyFile, (state.st_mode & S_IWUSR) == 0);
    }
}

const UnitElement::Archive *UnitElement::archive() const {
    return extras_ == nullptr ? nullptr : extras_->archive.get();
}

UnitElement::Archive &UnitElement::makeArchive() {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    if (extras_->archive == nullptr) {
        extras_->archive = std::make_unique<Archive>();
    }
    return *extras_->archive;
}

int UnitElement::sccArchiveRecursive(CString &project, CString &auxPath) const {
    for (const Element *at = this; at != nullptr; at = at->owner()) {
        const UnitElement *const unit = at->asUnit();
        if (unit != nullptr && unit->archive() != nullptr && unit->archive()->hasScc) {
            project = unit->archive()->sccProject;
            auxPath = unit->archive()->sccAuxPath;
            return 1;
        }
    }
    return 0;
}

int UnitElement::batchArchiveRecursive(CString &archive) const {
    for (const Element *at = this; at != nullptr; at = at->owner()) {
        const UnitElement *const unit = at->asUnit();
        if (unit != nullptr && unit->archive() != nullptr && !unit->archive()->batch.empty()) {
            archive = unit->archive()->batch;
            return 1;
        }
    }
    return 0;
}

void UnitElement::takeStateOf(const UnitElement &old) {
    cmState_ = old.cmState_;
    fileName_ = old.fileName_;
    directory_ = old.directory_;
    for (const Flag flag : {reference, external}) {
        set(flag, old.is(flag));
    }
    if (!old.elsewhere().empty()) {
        setElsewhere(old.elsewhere());
    }
    if (!old.oldFileName().empty()) {
        setOldFileName(old.oldFileName());
    }
}

std::string UnitElement::withExtension(std::string_view name) const {
    std::string file(name);
    const std::string_view extension = extensionOf(fileName_);
    if (!NoCaseEqual()(extensionOf(name), extension)) {
        file += extension;
    }
    return file;
}

bool UnitElement::mayHaveName(std::string_view name) const {
    // A read-only file does not prevent this: CM tools leave files read-only, and renaming does not change the
    // contents.
    return model() != nullptr && hasFile() && !is(stub) && !isRecursive(reference) &&
           faultOfNewName(withExtension(name)).empty();
}

bool UnitElement::keepsFileNameOfPart(std::string_view name) const {
    const UnitElement *const holder = saveUnit();
    // The new name has to be written to the file that lists the part.
    if (holder == nullptr || holder->isReadOnly() || holder->is(stub)) {
        return true;
    }
    return !name.empty() && !faultOfFileName(name).empty();
}

/// Returns why the unit's file can't get this name, as a clause for a message; empty if it can.
std::string UnitElement::faultOfNewName(const std::string &file) const {
    if (file == fileName_) {
        return {};
    }
    if (std::string fault = faultOfFileName(file); !fault.empty()) {
        return fault;
    }
    if (kind() == Kind::project) {
        return "its name comes from the project file";
    }
    const std::string to = ownDirectory() + '/' + file;
    const UnitElement *const there = model() == nullptr ? nullptr : model()->files().byPath(to);
    if (there != nullptr && there != this) {
        return "that file belongs to the unit '" + there->name() + "'";
    }
    // If only the new file exists, a tool has renamed it already.
    return platform::fileExists(to) && platform::fileExists(fullFileName()) ? "the file already exists" : "";
}

void UnitElement::rename(std::string_view name) {
    const std::string file = withExtension(name);
    if (file == fileName_ || !hasFile()) {
        return;
    }
    if (const std::string fault = faultOfNewName(file); !fault.empty()) {
        notifyUser("The file of '" + CString(this->name()) + "' can't be named '" + CString(file) + "': " + fault +
                       ".",
                   messageLevelDefault);
        return;
    }
    if (model() != nullptr && Workspace::instance().takeRenaming) {
        Workspace::instance().takeRenaming(*this, file);
        return;
    }
    const std::string from = fullFileName();
    const std::string to = ownDirectory() + '/' + file;
    if (platform::fileExists(from)) {
        // A file that can't be renamed stays where it is, and the unit keeps its name for it.
        if (std::rename(from.c_str(), to.c_str()) != 0) {
            notifyUser("The file '" + CString(from) + "' can't be renamed to '" + CString(file) +
                           "': " + platform::lastErrorText() + ".",
                       messageLevelDefault);
            return;
        }
    }
    const auto change = [&] {
        setOldFileName(fileName_);
        fileName_ = file;
    };
    if (model() == nullptr) {
        change();
        return;
    }
    model()->changePlaces(*this, change);
    if (owner() != nullptr) {
        owner()->changed(); // the owner's file names this one
    }
}

void UnitElement::moveTo(std::string_view directory) {
    std::string fault = faultOfDirectory(directory);
    const auto change = [&] { directory_ = directory; };
    if (fault.empty() && model() == nullptr) {
        change();
        return;
    }
    if (fault.empty() && hasFile()) {
        const std::string formerly = std::exchange(directory_, std::string(directory));
        const UnitElement *const there = model()->files().byPath(fullFileName());
        directory_ = formerly;
        if (there != nullptr && there != this) {
            fault = "its file would be that of the unit '" + there->name() + "'";
        }
    }
    if (!fault.empty()) {
        notifyUser("The directory of '" + CString(name()) + "' can't be '" + CString(std::string(directory)) +
                       "': " + fault + ".",
                   messageLevelDefault);
        return;
    }
    model()->changePlaces(*this, change);
    if (owner() != nullptr) {
        owner()->changed();
    }
}

int UnitElement::save(std::string_view path, bool always) {
    UnitElement *const holder = saveUnit();
    if (holder == nullptr || model() == nullptr) {
        return 0;
    }
    if (holder != this) {
        return holder->save(path, always);
    }
    if (!always && !modified()) {
        return 1;
    }
    std::string error;
    const std::string target = normalPath(path, platform::currentDirectory().view());
    if (is(stub)) {
        error = "it isn't loaded";
    } else if (model()->storage().save(*this, target, error)) {
        return 1;
    }
    notifyUser("The unit '" + CString(name()) + "' could not be saved to '" + CString(target) + "': " + error +
                   ".",
               messageLevelDefault);
    return 0;
}

int UnitElement::saveToOwnFile(bool always) {
    UnitElement *const holder = saveUnit();
    if (holder == nullptr) {
        return 0;
    }
    if (holder->save(holder->fullFileName(), always) == 0) {
        return 0;
    }
    holder->noteSaved();
    return 1;
}

void UnitElement::noteSaved() {
    std::vector<Element *> open{this};
    while (!open.empty()) {
        Element *const element = open.back();
        open.pop_back();
        element->setModified(false);
        for (const auto &child : element->children()) {
            const UnitElement *const unit = child->asUnit();
            if (unit == nullptr || !unit->isSaveUnit()) {
                open.push_back(child.get());
            }
        }
    }
    updateMode();
}

} // namespace orchard
