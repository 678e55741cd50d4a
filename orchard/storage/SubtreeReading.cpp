#include "orchard/storage/SubtreeReading.h"

namespace orchard {

SubtreeReading::SubtreeReading(Model &model, UnitElement *old)
    : model_(model), old_(old), loader_(model, options_) {
    loader_.wanted = [this](UnitElement &listed) { return isWanted(listed); };
    loader_.missing = [this](UnitElement &listed) { return keepsWithoutFile(listed); };
    loader_.broken = [this](UnitElement &listed, const Problem &problem) {
        return staysUnloaded(listed, problem);
    };
    loader_.admit = [this](Element &element) { return faultOf(element); };
    options_.warning = [this](const Problem &warning) { warnings_.push_back(warning); };
}

bool SubtreeReading::read(UnitElement &fresh, const FileText &file) {
    return loader_.load(fresh, file) && keptUnitsFit();
}

void SubtreeReading::moveKeptUnits() {
    for (const auto &[placeholder, kept] : kept_) {
        Element &owner = *placeholder->owner();
        const std::size_t place = owner.indexOf(*placeholder);
        std::unique_ptr<Element> moved = kept->owner()->takeChild(*kept);
        kept->setDirectorySetting(placeholder->directorySetting());
        kept->setFileName(placeholder->fileName());
        kept->setElsewhere(placeholder->elsewhere());
        for (const auto flag : {UnitElement::reference, UnitElement::external}) {
            kept->set(flag, placeholder->is(flag));
        }
        static_cast<void>(owner.replaceChild(place, std::move(moved)));
    }
}

/// Whether the element is in the model but not in the subtree that is being replaced.
bool SubtreeReading::isOutside(const Element &element) const {
    return old_ == nullptr || (&element != old_ && !old_->owns(element));
}

/// The unit with this identifier in the subtree that is being replaced, or null.
UnitElement *SubtreeReading::former(const Element &listed) const {
    Element *const there = model_.find(listed.id());
    return there == nullptr || isOutside(*there) ? nullptr : there->asUnit();
}

bool SubtreeReading::isWanted(UnitElement &listed) {
    UnitElement *const before = former(listed);
    if (before == nullptr) {
        return true;
    }
    if (before->modified() && before->kind() == listed.kind()) {
        kept_.emplace_back(&listed, before);
        return false;
    }
    listed.set(UnitElement::stubByChoice, before->is(UnitElement::stubByChoice));
    return !before->is(UnitElement::stub);
}

/// Keeps a loaded unit whose file is gone.
bool SubtreeReading::keepsWithoutFile(UnitElement &listed) {
    UnitElement *const before = former(listed);
    if (before == nullptr || before->is(UnitElement::stub) || before->kind() != listed.kind()) {
        return false;
    }
    kept_.emplace_back(&listed, before);
    warnings_.push_back(
        {listed.fullFileName(), 0, 0,
         "the file is missing; the unit '" + before->name() + "' stays in the model as it was read before"});
    return true;
}

/// Refuses a broken file of a loaded unit, which must not be lost; a new unit may stay a stub.
bool SubtreeReading::staysUnloaded(UnitElement &listed, const Problem &problem) {
    if (former(listed) != nullptr) {
        return false;
    }
    warnings_.push_back(unloadedFor(listed, problem));
    return true;
}

/// Whether none of the units moved over is also in one of the new files.
bool SubtreeReading::keptUnitsFit() {
    for (const auto &entry : kept_) {
        UnitElement *const kept = entry.second;
        visitSubtree<Element>(*kept, [&](Element &element) {
            if (&element != kept && !ids_.insert(element.id()).second) {
                loader_.problems().push_back(
                    {kept->fullFileName(), 0, 0,
                     "the unit '" + kept->name() +
                         (kept->modified() ? "' holds unsaved changes, and '" : "' is not read again, and '") +
                         element.name() + "' in it is now in another file"});
            }
        });
    }
    return loader_.problems().empty();
}

std::string SubtreeReading::faultOf(Element &element) {
    std::string fault = faultOfId(element);
    UnitElement *const unit = element.asUnit();
    if (!fault.empty() || unit == nullptr) {
        return fault;
    }
    if (const UnitElement *const before = former(element)) {
        unit->setCMState(before->cmState());
    }
    return unit->hasFile() ? faultOfFile(*unit) : std::string();
}

std::string SubtreeReading::faultOfId(Element &element) {
    const Element *const there = model_.find(element.id());
    const bool elsewhere = there != nullptr && isOutside(*there);
    if (!elsewhere && ids_.insert(element.id()).second) {
        return {};
    }
    return "the identifier " + element.id().text() + " of '" + element.name() + "' belongs to another element" +
           (elsewhere ? ", '" + there->name() + "'" : std::string());
}

std::string SubtreeReading::faultOfFile(const UnitElement &unit) {
    const std::string path = unit.fullFileName();
    const UnitElement *const holder = model_.files().byPath(path);
    const bool taken = holder != nullptr && isOutside(*holder);
    return taken || !paths_.insert(path).second ? "the file " + path + " already belongs to another unit"
                                                : std::string();
}

} // namespace orchard
