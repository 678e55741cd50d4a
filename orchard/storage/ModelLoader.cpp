#include "orchard/storage/ModelLoader.h"

#include "orchard/model/Model.h"
#include "orchard/storage/UnitHeader.h"

namespace orchard {

namespace {

/// Units may be nested this deep; more is a broken or a hostile model.
constexpr int deepest = 200;
/// Enough to know that much is wrong.
constexpr std::size_t mostProblems = 100;

int depthOf(const Element &element) {
    int depth = 0;
    for (const Element *at = element.owner(); at != nullptr; at = at->owner()) {
        ++depth;
    }
    return depth;
}

/// Takes away what a filling that failed has left, so that the unit is what its owner's file says of it.
void makeStubAgain(UnitElement &unit, std::string_view listedName) {
    const std::unique_ptr<Element> scrap = makeElement(unit.kind());
    unit.giveChildrenTo(*scrap);
    const std::unique_ptr<Element> blank = makeElement(unit.kind());
    blank->setId(unit.id());
    blank->setName(listedName);
    unit.takeFacts(*blank);
    if (unit.archive() != nullptr) {
        unit.makeArchive() = {};
    }
    unit.set(UnitElement::hiddenFromCM, false);
    unit.set(UnitElement::stub, true);
}

} // namespace

Problem unloadedFor(const UnitElement &unit, Problem problem) {
    problem.text += "; the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                    "' stays unloaded until the file is mended, or fetched or checked out again";
    return problem;
}

bool ModelLoader::load(UnitElement &unit) { return run(unit, nullptr); }
bool ModelLoader::load(UnitElement &unit, const FileText &text) { return run(unit, &text); }

bool ModelLoader::tellAndAsk(std::size_t done) {
    constexpr std::size_t step = 256;
    if (done % step == 0 || done == queue_.size()) {
        if (options_.progress) {
            options_.progress(done, queue_.size());
        }
        cancelled_ = options_.cancelled && options_.cancelled();
    }
    return !cancelled_;
}

bool ModelLoader::run(UnitElement &unit, const FileText *known) {
    queue_.assign(1, &unit);
    for (std::size_t at = 0; at < queue_.size() && problems_.size() < mostProblems; ++at) {
        UnitElement &next = *queue_[at];
        if (at == 0 && known != nullptr) {
            fillFrom(next, *known, next.fullFileName());
        } else if (at == 0 || !wanted || wanted(next)) {
            readFile(next, at == 0);
        } else {
            admitContent(next, file_, next.fullFileName());
        }
        if (!tellAndAsk(at + 1)) {
            return false;
        }
    }
    return problems_.empty();
}

void ModelLoader::readFile(UnitElement &unit, bool isFirst) {
    const std::string path = unit.fullFileName();
    switch (file_.read(path)) {
    case FileRead::done:
        fillFrom(unit, file_, path);
        return;
    case FileRead::failed:
        refuse(unit, file_, path, {path, 0, 0, file_.fault});
        return;
    case FileRead::missing:
        break;
    }
    if (isFirst) {
        problems_.push_back({path, 0, 0, "the file is missing"});
        return;
    }
    if (missing && missing(unit)) {
        admitContent(unit, file_, path);
        return;
    }
    if (options_.warning) {
        options_.warning({path, 0, 0,
                          "the file of the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                              "' is missing; the unit stays unloaded until it is fetched"});
    }
    admitContent(unit, file_, path);
}

void ModelLoader::fillFrom(UnitElement &unit, const FileText &file, const std::string &path) {
    Fault fault;
    const auto refused = [&] { refuse(unit, file, path, problemAt(path, file.text, fault)); };
    if (!document_.parse(file.text, fault)) {
        refused();
        return;
    }
    fault.offset = document_.rootOffset();
    if (document_.kind() != unit.kind()) {
        fault.text = "the file holds a " + std::string(traitsOf(document_.kind()).tag) + "; expected a " +
                     std::string(traitsOf(unit.kind()).tag);
        refused();
        return;
    }
    if (!unit.id().empty() && document_.id() != unit.id()) {
        fault.text =
            "the file holds the unit " + document_.id().text() + "; its owner names it as " + unit.id().text();
        refused();
        return;
    }
    if (depthOf(unit) > deepest) {
        fault.text = "units are nested more than " + std::to_string(deepest) + " deep";
        refused();
        return;
    }
    const std::size_t known = queue_.size();
    const std::string listedName = unit.name();
    if (!document_.fill(unit, &model_, queue_, fault)) {
        queue_.resize(known);
        makeStubAgain(unit, listedName);
        refused();
        return;
    }
    unit.setHeader(findHeader(file.text).text);
    unit.setBodyHash(bodyHashOf(file.text));
    unit.set(UnitElement::readOnlyFile, file.readOnly);
    if (!admitContent(unit, file, path)) {
        queue_.resize(known); // what it lists would be wrong for the same reason, or lead back to it for ever
    }
}

/// A unit that is listed may stay a stub; the first one is what was asked for.
void ModelLoader::refuse(UnitElement &unit, const FileText &file, const std::string &path, Problem problem) {
    if (&unit == queue_.front() || !broken || !broken(unit, problem)) {
        problems_.push_back(std::move(problem));
        return;
    }
    admitContent(unit, file, path);
}

/// Hands on the unit and the elements in its file. Units that it lists are handed on with their own files, and
/// so their names are known by then.
bool ModelLoader::admitContent(UnitElement &unit, const FileText &file, const std::string &path) {
    std::vector<Element *> open{&unit};
    while (!open.empty()) {
        Element &element = *open.back();
        open.pop_back();
        if (const std::string why = admit ? admit(element) : std::string(); !why.empty()) {
            const std::size_t at = file.text.find(element.id().text());
            const bool named = at != std::string::npos && !unit.is(UnitElement::stub);
            problems_.push_back(named ? problemAt(path, file.text, {at, why}) : Problem{path, 0, 0, why});
            return false;
        }
        for (const auto &child : element.children()) {
            const UnitElement *const inner = child->asUnit();
            if (inner == nullptr || !inner->isSaveUnit()) {
                open.push_back(child.get());
            }
        }
    }
    return true;
}

} // namespace orchard
