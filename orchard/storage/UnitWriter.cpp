#include "orchard/storage/UnitWriter.h"

#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/TextCheck.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <optional>

namespace orchard {

namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

void addHeader(std::string &text, std::string_view header) {
    if (!header.empty()) {
        text.append("<!--\n").append(header).append("\n-->\n");
    }
}

class Writing {
  public:
    Writing(std::string &text, const Intention &intention, std::vector<Cut> &cuts)
        : text_(text), intention_(intention), cuts_(cuts) {}

    void writeRoot(const UnitElement &unit);
    [[nodiscard]] const std::string &fault() const { return fault_; }

  private:
    void escaped(std::string_view value, bool inAttribute);
    void attribute(std::string_view name, std::string_view value);
    void fact(std::size_t depth, std::string_view tag, std::string_view value);
    void indent(std::size_t depth) { text_.append(2 * depth, ' '); }
    void content(const Element &element, std::size_t depth);
    void child(const Element &child, std::size_t depth);
    [[nodiscard]] const Intention::Facts *intended(const Element &element) const {
        const auto found = intention_.facts.find(&element);
        return found == intention_.facts.end() ? nullptr : &found->second;
    }
    void unitFacts(const UnitElement &unit, std::size_t depth);
    void properties(const Element &element, std::size_t depth);
    void listed(const UnitElement &unit, std::size_t depth);

    std::string &text_;
    const Intention &intention_;
    std::vector<Cut> &cuts_;
    std::string fault_;
    const Element *at_ = nullptr;
};

void Writing::escaped(std::string_view value, bool inAttribute) {
    if (const auto bad = faultOfValue(value); bad && fault_.empty()) {
        fault_ = *bad + " (in '" + (at_ == nullptr ? std::string() : at_->name()) + "')";
    }
    for (const char character : value) {
        switch (character) {
        case '&':
            text_ += "&amp;";
            break;
        case '<':
            text_ += "&lt;";
            break;
        case '>':
            text_ += "&gt;";
            break;
        case '\r':
            text_ += "&#13;";
            break; // a literal one would be read back as "\n"
        case '"':
            text_ += inAttribute ? "&quot;" : "\"";
            break;
        case '\n':
            text_ += inAttribute ? "&#10;" : "\n";
            break;
        case '\t':
            text_ += inAttribute ? "&#9;" : "\t";
            break;
        default:
            text_ += character;
        }
    }
}

void Writing::attribute(std::string_view name, std::string_view value) {
    text_ += ' ';
    text_ += name;
    text_ += "=\"";
    escaped(value, true);
    text_ += '"';
}

void Writing::fact(std::size_t depth, std::string_view tag, std::string_view value) {
    if (value.empty()) {
        return;
    }
    indent(depth);
    text_ += '<';
    text_ += tag;
    text_ += '>';
    escaped(value, false);
    text_ += "</";
    text_ += tag;
    text_ += ">\n";
}

void Writing::properties(const Element &element, std::size_t depth) {
    if (element.properties() == nullptr) {
        return;
    }
    for (const PropertyTable::Entry &entry : element.properties()->entries()) {
        indent(depth);
        text_ += "<property";
        attribute("subject", entry.subject);
        attribute("metaclass", entry.metaclass);
        attribute("name", entry.property->getName());
        attribute("type", entry.property->getType());
        text_ += '>';
        escaped(entry.property->getValue(), false);
        text_ += "</property>\n";
    }
}

void Writing::unitFacts(const UnitElement &unit, std::size_t depth) {
    if (unit.is(UnitElement::hiddenFromCM)) {
        fact(depth, "hidden-from-cm", "yes");
    }
    if (const auto *const archive = unit.archive()) {
        fact(depth, "scc-project", archive->sccProject);
        fact(depth, "scc-path", archive->sccAuxPath);
        fact(depth, "batch-archive", archive->batch);
    }
}

void Writing::listed(const UnitElement &unit, std::size_t depth) {
    indent(depth);
    if (unit.kind() == Kind::embedded) {
        text_ += "<embedded";
    } else {
        text_ += "<unit";
        attribute("kind", traitsOf(unit.kind()).tag);
    }
    attribute("id", unit.id().text());
    const Intention::Facts *const facts = intended(unit);
    const std::string &directory = facts == nullptr ? unit.directorySetting() : facts->directory;
    if (!directory.empty()) {
        attribute("directory", directory);
    }
    std::string file = facts == nullptr ? unit.fileName() : facts->fileName;
    const std::string &elsewhere = facts == nullptr ? unit.elsewhere() : facts->elsewhere;
    if (!elsewhere.empty()) {
        const std::size_t cut = elsewhere.find_last_of("/\\");
        file = elsewhere.substr(0, cut + 1) + file;
    }
    attribute("file", file);
    if (unit.is(UnitElement::reference)) {
        attribute("reference", "yes");
    }
    if (unit.is(UnitElement::external)) {
        attribute("external", "yes");
    }
    text_ += "/>\n";
}

void Writing::content(const Element &element, std::size_t depth) {
    at_ = &element;
    const Intention::Facts *const facts = intended(element);
    const std::string &name = facts == nullptr ? element.name() : facts->name;
    if (name.empty() && fault_.empty()) {
        fault_ = "the " + std::string(traitsOf(element.kind()).tag) + " " + element.id().text() + " has no name";
    }
    fact(depth, "name", name);
    fact(depth, "description", element.description());
    fact(depth, "type", element.type());
    if (!element.standsFor().empty()) {
        fact(depth, "stands-for", element.standsFor().text());
    }
    if (element.kind() == Kind::configuration) {
        fact(depth, "respect", element.respectMode() ? "yes" : "no");
    }
    if (const UnitElement *const unit = element.asUnit()) {
        unitFacts(*unit, depth);
    }
    properties(element, depth);
    for (const auto &inner : element.children()) {
        const std::size_t begin = text_.size();
        child(*inner, depth);
        if (const auto part = intention_.leaving.find(inner.get()); part != intention_.leaving.end()) {
            cuts_.push_back({part->second, begin, text_.size()});
        }
    }
    for (const Element *const inner :
         &element == intention_.newOwner ? intention_.entering : std::vector<const Element *>()) {
        child(*inner, depth);
    }
}

void Writing::child(const Element &child, std::size_t depth) {
    const UnitElement *const unit = child.asUnit();
    if (unit != nullptr && unit->hasFile()) {
        listed(*unit, depth);
        return;
    }
    indent(depth);
    text_ += '<';
    text_ += traitsOf(child.kind()).tag;
    attribute("id", child.id().text());
    text_ += ">\n";
    content(child, depth + 1);
    indent(depth);
    text_ += "</";
    text_ += traitsOf(child.kind()).tag;
    text_ += ">\n";
}

void Writing::writeRoot(const UnitElement &unit) {
    text_ += '<';
    text_ += traitsOf(unit.kind()).tag;
    attribute("format", "1");
    attribute("id", unit.id().text());
    const bool enters = intention_.newOwner != nullptr && intention_.leaving.contains(&unit);
    if (const Element *const owner = enters ? intention_.newOwner : unit.owner(); owner != nullptr) {
        attribute("owner", owner->id().text());
    }
    text_ += ">\n";
    content(unit, 1);
    text_ += "</";
    text_ += traitsOf(unit.kind()).tag;
    text_ += ">\n";
}

} // namespace

bool writeUnit(const UnitElement &unit, std::string_view header, std::string &text, std::string &fault) {
    std::vector<Cut> none;
    return writeUnit(unit, header, {}, text, none, fault);
}

bool writeUnit(const UnitElement &unit, std::string_view header, const Intention &intention, std::string &text,
               std::vector<Cut> &cuts, std::string &fault) {
    text = declaration;
    if (header.find("-->") != std::string_view::npos) {
        fault = "its header holds \"-->\", which would end it";
        return false;
    }
    // Other bytes stay as the tool wrote them: the reader accepts them, too.
    if (header.find('\0') != std::string_view::npos) {
        fault = "its header holds the control character 0x00";
        return false;
    }
    addHeader(text, header);
    Writing writing(text, intention, cuts);
    writing.writeRoot(unit);
    fault = writing.fault();
    return fault.empty();
}

std::string withHeaderOf(std::string_view other, std::string_view text) {
    const UnitHeader header = findHeader(other);
    if (header.text.empty() || header.text == findHeader(text).text) {
        return std::string(text);
    }
    std::string joined(declaration);
    addHeader(joined, header.text);
    return joined.append(text.substr(findHeader(text).end));
}

} // namespace orchard
