#include "CM/host/Reload.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <optional>
#include <string>

namespace {

/// Returns the model content of a file: all except its header, with normalised line ends.
std::optional<std::string> contentOf(const std::string &path) {
    orchard::FileText file;
    if (file.read(path) != orchard::FileRead::done) {
        return std::nullopt;
    }
    std::string content = file.text.substr(orchard::findHeader(file.text).end);
    std::erase(content, '\r');
    return content;
}

/// Returns whether the file holds what its unit in the active project was read from. If another program has
/// changed it before, the new contents are new to the model even if they equal the file.
bool isAsLoaded(const std::string &path) {
    const orchard::Model *const model = orchard::Workspace::instance().active();
    const std::string full = orchard::normalPath(path, platform::currentDirectory().view());
    const orchard::UnitElement *const unit = model == nullptr ? nullptr : model->files().byPath(full);
    orchard::FileText file;
    return unit == nullptr || unit->is(orchard::UnitElement::stub) || unit->bodyHash() == 0 ||
           (file.read(path) == orchard::FileRead::done && orchard::bodyHashOf(file.text) == unit->bodyHash());
}

} // namespace

struct CCMFileCompare::Pictures {
    std::string path;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

CCMFileCompare::CCMFileCompare(const CString &path) : pictures_(std::make_unique<Pictures>()) {
    pictures_->path = path.str();
}
CCMFileCompare::~CCMFileCompare() = default;

void CCMFileCompare::LoadFile1() {
    pictures_->before = isAsLoaded(pictures_->path) ? contentOf(pictures_->path) : std::nullopt;
}
void CCMFileCompare::LoadFile2() { pictures_->after = contentOf(pictures_->path); }

int CCMFileCompare::Compare() {
    return pictures_->before && pictures_->after && *pictures_->before == *pictures_->after ? 1 : 0;
}

void CCMFileCompare::atm(IUnit *unit) {
    if (unit != nullptr) {
        unit->updateCMHeader();
        unit->updateMode({});
    }
}
