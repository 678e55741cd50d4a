#include "CM/host/Reload.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <optional>
#include <string>

namespace {

/// What a file says of the model: all but its header, whatever the line ends that a tool has put in.
std::optional<std::string> contentOf(const std::string &path) {
    orchard::FileText file;
    if (file.read(path) != orchard::FileRead::done) {
        return std::nullopt;
    }
    std::string content = file.text.substr(orchard::findHeader(file.text).end);
    std::erase(content, '\r');
    return content;
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

void CCMFileCompare::LoadFile1() { pictures_->before = contentOf(pictures_->path); }
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
