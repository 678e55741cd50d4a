#include "orchard/storage/UnitWriter.h"

#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/TextCheck.h"

#include <optional>

namespace orchard {

namespace {

class Writing {
  public:
    explicit Writing(std::string &text) : text_(text) {}

    void writeRoot(const UnitElement &unit);
    [[nodiscard]] const std::string &fault() const { return fault_; }

  private:
    void escaped(std::string_view value, bool inAttribute);
    void attribute(std::string_view name, std::string_view value);
    void fact(std::size_t depth, std::string_view tag, std::string_view value);
    void indent(std::size_t depth) { text_.append(2 * depth, ' '); }
    void content(const Element &element, std::size_t depth);
    void unitFacts(const UnitElement &unit, std::size_t depth);
    void properties(const Element &element, std::size_t depth);
    void listed(const UnitElement &unit, std::size_t depth);

    std::string &text_;
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
    if (!unit.directorySetting().empty()) {
        attribute("directory", unit.directorySetting());
    }
    std::string file = unit.fileName();
    if (const std::string &elsewhere = unit.elsewhere(); !elsewhere.empty()) {
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
    if (element.name().empty() && fault_.empty()) {
        fault_ = "the " + std::string(traitsOf(element.kind()).tag) + " " + element.id().text() + " has no name";
    }
    fact(depth, "name", element.name());
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
    for (const auto &child : element.children()) {
        const UnitElement *const unit = child->asUnit();
        if (unit != nullptr && unit->hasFile()) {
            listed(*unit, depth);
            continue;
        }
        indent(depth);
        text_ += '<';
        text_ += traitsOf(child->kind()).tag;
        attribute("id", child->id().text());
        text_ += ">\n";
        content(*child, depth + 1);
        indent(depth);
        text_ += "</";
        text_ += traitsOf(child->kind()).tag;
        text_ += ">\n";
    }
}

void Writing::writeRoot(const UnitElement &unit) {
    text_ += '<';
    text_ += traitsOf(unit.kind()).tag;
    attribute("format", "1");
    attribute("id", unit.id().text());
    if (unit.owner() != nullptr) {
        attribute("owner", unit.owner()->id().text());
    }
    text_ += ">\n";
    content(unit, 1);
    text_ += "</";
    text_ += traitsOf(unit.kind()).tag;
    text_ += ">\n";
}

} // namespace

bool writeUnit(const UnitElement &unit, std::string_view header, std::string &text, std::string &fault) {
    text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    if (header.find("-->") != std::string_view::npos) {
        fault = "its header holds \"-->\", which would end it";
        return false;
    }
    // Other bytes stay as the tool wrote them: the reader accepts them, too.
    if (header.find('\0') != std::string_view::npos) {
        fault = "its header holds the control character 0x00";
        return false;
    }
    if (!header.empty()) {
        text += "<!--\n";
        text += header;
        text += "\n-->\n";
    }
    Writing writing(text);
    writing.writeRoot(unit);
    fault = writing.fault();
    return fault.empty();
}

} // namespace orchard
