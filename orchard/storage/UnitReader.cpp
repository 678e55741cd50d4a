#include "orchard/storage/UnitReader.h"

#include "orchard/storage/UnitHeader.h"

#include <memory>
#include <string_view>
#include <utility>

namespace orchard {

namespace {

/// Units may be nested this deep; deeper nesting means a broken or hostile model.
constexpr int deepest = 200;

int depthOf(const Element &element) {
    int depth = 0;
    for (const Element *at = element.owner(); at != nullptr; at = at->owner()) {
        ++depth;
    }
    return depth;
}

/// Why the file can't be the unit's; empty if it can.
std::string faultOfRoot(const UnitElement &unit, const UnitDocument &document) {
    if (document.kind() != unit.kind()) {
        return "the file holds a " + std::string(traitsOf(document.kind()).tag) + "; expected a " +
               std::string(traitsOf(unit.kind()).tag);
    }
    if (!unit.id().empty() && document.id() != unit.id()) {
        return "the file holds the unit " + document.id().text() + "; its owner names it as " + unit.id().text();
    }
    if (depthOf(unit) > deepest) {
        return "units are nested more than " + std::to_string(deepest) + " levels deep";
    }
    return {};
}

/// Removes what a failed filling has left. Detaches the unit from the model meanwhile, which does not know it yet.
void makeStubAgain(UnitElement &unit, std::string_view listedName) {
    Model *const model = unit.model();
    unit.setModel(nullptr);
    const std::unique_ptr<Element> scrap = makeElement(unit.kind());
    unit.giveChildrenTo(*scrap);
    const std::unique_ptr<Element> blank = makeElement(unit.kind());
    blank->setId(unit.id());
    blank->setName(listedName);
    unit.takeFacts(*blank);
    unit.setModel(model);
    if (unit.archive() != nullptr) {
        unit.makeArchive() = {};
    }
    unit.set(UnitElement::hiddenFromCM, false);
    unit.set(UnitElement::stub, true);
}

UnitReading refused(Problem problem) { return {UnitReading::refused, std::move(problem), {}}; }

} // namespace

void takeFileState(UnitElement &unit, const FileText &file) {
    unit.setHeader(findHeader(file.text).text);
    unit.setBodyHash(bodyHashOf(file.text));
    unit.set(UnitElement::readOnlyFile, file.readOnly);
    unit.setFileState(file.state);
}

UnitReading UnitReader::read(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    switch (file_.read(path)) {
    case FileRead::done:
        return fill(unit, file_, path);
    case FileRead::missing:
        return {UnitReading::missing, {}, {}};
    case FileRead::failed:
        break;
    }
    return refused({path, 0, 0, file_.fault});
}

UnitReading UnitReader::fill(UnitElement &unit, const FileText &file) {
    return fill(unit, file, unit.fullFileName());
}

UnitReading UnitReader::fill(UnitElement &unit, const FileText &file, const std::string &path) {
    Fault fault;
    if (!document_.parse(file.text, fault)) {
        return refused(problemAt(path, file.text, fault));
    }
    fault = {document_.rootOffset(), faultOfRoot(unit, document_)};
    if (!fault.text.empty()) {
        return refused(problemAt(path, file.text, fault));
    }
    const std::string listedName = unit.name();
    UnitReading reading{UnitReading::filled, {}, {}};
    if (!document_.fill(unit, &model_, reading.listed, fault)) {
        makeStubAgain(unit, listedName);
        return refused(problemAt(path, file.text, fault));
    }
    takeFileState(unit, file);
    return reading;
}

} // namespace orchard
