#include "orchard/storage/UnitDocument.h"

#include "orchard/model/Paths.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/TextCheck.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <pugixml.hpp>
#include <sys/stat.h>

namespace orchard {

namespace {

constexpr int formatVersion = 1;
/// Elements of one file may be nested this deep; deeper nesting means a broken or hostile file.
constexpr int deepest = 100;

/// Ends the reading of a file; never leaves this source file.
struct Refusal {
    Fault fault;
};

[[noreturn]] void refuse(const pugi::xml_node &where, std::string text) {
    const std::ptrdiff_t offset = where.offset_debug();
    throw Refusal{{offset < 0 ? 0 : static_cast<std::size_t>(offset), std::move(text)}};
}

std::string tagText(const pugi::xml_node &node) { return "<" + std::string(node.name()) + ">"; }

std::string_view attributeOf(const pugi::xml_node &node, const char *name) { return node.attribute(name).value(); }

/// Refuses attributes other than the known ones, and duplicates.
void checkAttributes(const pugi::xml_node &node, std::initializer_list<std::string_view> known) {
    unsigned seen = 0;
    for (const pugi::xml_attribute &attribute : node.attributes()) {
        const auto *const found = std::ranges::find(known, std::string_view(attribute.name()));
        if (found == known.end()) {
            std::string expected;
            for (const std::string_view name : known) {
                expected += expected.empty() ? "" : ", ";
                expected += name;
            }
            refuse(node, tagText(node) + " has the attribute \"" + attribute.name() +
                             "\", which is not known here" +
                             (expected.empty() ? std::string("; expected none") : "; known are " + expected));
        }
        const unsigned bit = 1U << static_cast<unsigned>(found - known.begin());
        if ((seen & bit) != 0) {
            refuse(node, tagText(node) + " has the attribute \"" + attribute.name() + "\" twice");
        }
        seen |= bit;
    }
}

ElementId idOf(const pugi::xml_node &node, const char *attribute = "id") {
    const std::string_view text = attributeOf(node, attribute);
    const auto id = ElementId::parse(text);
    if (!id) {
        refuse(node, tagText(node) + " has " +
                         (text.empty() ? std::string("no identifier")
                                       : "the identifier \"" + std::string(text.substr(0, 80)) + "\"") +
                         "; expected " + attribute +
                         "=\"...\" with 32 hexadecimal digits in groups of 8-4-4-4-12");
    }
    return *id;
}

/// The text of an element that contains nothing else.
std::string_view textOf(const pugi::xml_node &node) {
    const pugi::xml_node first = node.first_child();
    if (!first) {
        return {};
    }
    if (first.type() != pugi::node_pcdata || first.next_sibling()) {
        refuse(node, tagText(node) + " may hold text only");
    }
    return first.value();
}

bool truthOf(const pugi::xml_node &node, std::string_view text) {
    if (text != "yes" && text != "no") {
        refuse(node,
               tagText(node) + " says \"" + std::string(text.substr(0, 80)) + "\"; expected \"yes\" or \"no\"");
    }
    return text == "yes";
}

class Filling {
  public:
    Filling(Model *model, std::vector<UnitElement *> &listed) : model_(model), listed_(listed) {}

    void fill(const pugi::xml_node &node, Element &element, int depth);

  private:
    void readListed(const pugi::xml_node &node, Element &owner);
    void readEmbedded(const pugi::xml_node &node, Element &owner);
    void readFile(const pugi::xml_node &node, UnitElement &unit);
    static void readProperty(const pugi::xml_node &node, Element &element);
    static bool readFact(const pugi::xml_node &node, std::string_view tag, Element &element);
    void readInner(const pugi::xml_node &node, Kind kind, Element &owner, int depth);

    Model *model_;
    std::vector<UnitElement *> &listed_;
};

void Filling::readProperty(const pugi::xml_node &node, Element &element) {
    checkAttributes(node, {"subject", "metaclass", "name", "type"});
    const std::string_view name = attributeOf(node, "name");
    if (name.empty()) {
        refuse(node, "<property> has no name; expected subject, metaclass, name and type");
    }
    const std::string_view subject = attributeOf(node, "subject");
    const std::string_view metaclass = attributeOf(node, "metaclass");
    PropertyTable &properties = element.makeProperties();
    if (properties.find(subject, metaclass, name) != nullptr) {
        refuse(node, "there is a second <property> of this subject, metaclass and name");
    }
    properties.set(subject, metaclass, name, attributeOf(node, "type"), textOf(node));
}

/// Returns true if the tag is that of a fact that the element can have, and reads the fact.
bool Filling::readFact(const pugi::xml_node &node, std::string_view tag, Element &element) {
    const Kind kind = element.kind();
    UnitElement *const unit = element.asUnit();
    if (tag == "description") {
        element.setDescription(textOf(node));
    } else if (tag == "type" && (kind == Kind::attribute || kind == Kind::operation)) {
        element.setType(textOf(node));
    } else if (tag == "stands-for" && kind == Kind::fragment) {
        const std::string_view text = textOf(node);
        const auto id = ElementId::parse(text);
        if (!id) {
            refuse(node,
                   "<stands-for> holds no identifier; expected 32 hexadecimal digits in groups of 8-4-4-4-12");
        }
        element.setStandsFor(*id);
    } else if (tag == "respect" && kind == Kind::configuration) {
        element.setRespectMode(truthOf(node, textOf(node)));
    } else if (tag == "hidden-from-cm" && kind == Kind::subsystem) {
        unit->set(UnitElement::hiddenFromCM, truthOf(node, textOf(node)));
    } else if (tag == "scc-project" && unit != nullptr) {
        unit->makeArchive().sccProject = textOf(node);
        unit->makeArchive().hasScc = true;
    } else if (tag == "scc-path" && unit != nullptr) {
        unit->makeArchive().sccAuxPath = textOf(node);
        unit->makeArchive().hasScc = true;
    } else if (tag == "batch-archive" && unit != nullptr) {
        unit->makeArchive().batch = textOf(node);
    } else {
        return false;
    }
    checkAttributes(node, {});
    return true;
}

void Filling::readFile(const pugi::xml_node &node, UnitElement &unit) {
    const bool reference = node.attribute("reference") && truthOf(node, attributeOf(node, "reference"));
    const bool external = node.attribute("external") && truthOf(node, attributeOf(node, "external"));
    const std::string_view path = attributeOf(node, "file");
    std::string_view file = path;
    if (reference || external) {
        file = fileOfPath(path);
        unit.setElsewhere(hasSeparator(path) ? path : std::string_view());
    }
    std::string fault = faultOfFileName(file);
    if (fault.empty() && (reference || external)) {
        fault = faultOfPath(path);
    }
    if (!fault.empty()) {
        refuse(node, "the file name \"" + std::string(path.substr(0, 300)) + "\" is refused: " + fault);
    }
    unit.setFileName(file);
    unit.set(UnitElement::reference, reference);
    unit.set(UnitElement::external, external);
    const std::string_view directory = attributeOf(node, "directory");
    if (directory.empty()) {
        return;
    }
    unit.setDirectorySetting(directory);
    if (fault = faultOfDirectory(directory); !fault.empty()) {
        refuse(node, "the directory \"" + std::string(directory.substr(0, 300)) + "\" is refused: " + fault);
    }
}

/// Reads a unit with a file of its own: it is known from here on, and loaded from its file later.
void Filling::readListed(const pugi::xml_node &node, Element &owner) {
    checkAttributes(node, {"kind", "id", "file", "directory", "reference", "external"});
    const std::string_view tag = attributeOf(node, "kind");
    const auto kind = kindWithTag(tag);
    if (!kind || !isFileKind(*kind) || !mayHold(owner.kind(), *kind)) {
        refuse(node, "a unit of the kind \"" + std::string(tag.substr(0, 80)) + "\" can't be in a " +
                         std::string(traitsOf(owner.kind()).tag));
    }
    Element &element = owner.addChild(makeElement(*kind));
    UnitElement &unit = *element.asUnit();
    unit.setModel(model_);
    unit.setId(idOf(node));
    readFile(node, unit);
    const std::string_view file = unit.fileName();
    unit.setName(file.substr(0, file.size() - extensionOf(file).size()));
    unit.set(UnitElement::stub, true);
    if (node.first_child()) {
        refuse(node, "<unit> must be empty; the contents of the unit are in its own file");
    }
    listed_.push_back(&unit);
}

void Filling::readEmbedded(const pugi::xml_node &node, Element &owner) {
    checkAttributes(node, {"id", "file", "directory"});
    UnitElement &unit = *owner.addChild(makeElement(Kind::embedded)).asUnit();
    unit.setModel(model_);
    unit.setId(idOf(node));
    readFile(node, unit);
    unit.setName(unit.fileName());
    if (node.first_child()) {
        refuse(node, "<embedded> must be empty");
    }
    struct stat state {};
    if (::stat(unit.fullFileName().c_str(), &state) == 0) {
        unit.setFileState(FileState::of(state));
    }
    unit.updateMode();
    unit.updateHeader(true); // a file that does not exist yet has none
}

void Filling::readInner(const pugi::xml_node &node, Kind kind, Element &owner, int depth) {
    if (depth >= deepest) {
        refuse(node, "elements are nested more than " + std::to_string(deepest) + " levels deep");
    }
    checkAttributes(node, {"id"});
    Element &element = owner.addChild(makeElement(kind));
    element.setModel(model_);
    element.setId(idOf(node));
    fill(node, element, depth + 1);
}

void Filling::fill(const pugi::xml_node &node, Element &element, int depth) {
    bool named = false;
    std::vector<std::string_view> facts;
    for (const pugi::xml_node &inner : node) {
        if (inner.type() != pugi::node_element) {
            if (inner.type() == pugi::node_pcdata) {
                refuse(node, tagText(node) + " holds text outside its elements; expected elements only");
            }
            refuse(node, tagText(node) + " holds a comment, an instruction or a CDATA section; expected elements "
                                         "only (a comment may stand at the top of the file)");
        }
        const std::string_view tag = inner.name();
        if (tag == "name") {
            checkAttributes(inner, {});
            if (named) {
                refuse(inner, tagText(node) + " has a second name");
            }
            named = true;
            element.setName(textOf(inner));
            if (element.name().empty()) {
                refuse(inner, tagText(node) + " has an empty name");
            }
        } else if (tag == "property") {
            readProperty(inner, element);
        } else if (tag == "unit") {
            readListed(inner, element);
        } else if (tag == "embedded" && mayHold(element.kind(), Kind::embedded)) {
            readEmbedded(inner, element);
        } else if (const auto kind = kindWithTag(tag); kind && mayHold(element.kind(), *kind)) {
            readInner(inner, *kind, element, depth);
        } else if (!readFact(inner, tag, element)) {
            refuse(inner, tagText(inner) + " is not known in " + tagText(node));
        } else if (std::ranges::find(facts, tag) != facts.end()) {
            refuse(inner, tagText(node) + " has a second " + tagText(inner));
        } else {
            facts.push_back(tag);
        }
    }
    if (!named) {
        refuse(node, tagText(node) + " has no name; expected <name>...</name> in it");
    }
}

} // namespace

struct UnitDocument::State {
    std::string buffer; // the parser writes to it
    pugi::xml_document document;
    pugi::xml_node root;
    Kind kind = Kind::classKind;
    ElementId id;
    ElementId owner;

    void checkRoot();
};

UnitDocument::UnitDocument() : state_(std::make_unique<State>()) {}
UnitDocument::~UnitDocument() = default;

Kind UnitDocument::kind() const { return state_->kind; }
const ElementId &UnitDocument::id() const { return state_->id; }
const ElementId &UnitDocument::owner() const { return state_->owner; }
std::size_t UnitDocument::rootOffset() const {
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(state_->root.offset_debug(), 0));
}

void UnitDocument::State::checkRoot() {
    root = {};
    bool header = false;
    for (const pugi::xml_node &node : document) {
        switch (node.type()) {
        case pugi::node_declaration:
            break;
        case pugi::node_comment:
            if (header || root) {
                refuse(root ? root : node, "there is more than one comment, or one after the root element; "
                                           "expected one header at the top");
            }
            header = true;
            break;
        case pugi::node_element:
            if (root) {
                refuse(node, "there is a second root element, " + tagText(node) + "; expected one unit a file");
            }
            root = node;
            break;
        case pugi::node_pcdata:
        case pugi::node_cdata:
            // The next save would lose the text.
            refuse(node, "there is text outside the root element, which a merge may have left; expected nothing "
                         "but a header and one root element");
        case pugi::node_doctype:
            refuse(node, "there is a document type (DTD); unit files have none");
        default:
            refuse(node, "expected nothing but a header and one root element");
        }
    }
    if (!root) {
        refuse(root, "there is no root element; expected a unit");
    }
    const auto rootKind = kindWithTag(root.name());
    if (!rootKind || !isFileKind(*rootKind)) {
        refuse(root, "the root element is " + tagText(root) +
                         "; expected <project>, <subsystem>, <class>, <component> or <file>");
    }
    kind = *rootKind;
    checkAttributes(root, {"format", "id", "owner"});
    if (const std::string_view format = attributeOf(root, "format"); format != std::to_string(formatVersion)) {
        refuse(root, "the format of the file is \"" + std::string(format.substr(0, 80)) +
                         "\"; this program reads format=\"1\"");
    }
    id = idOf(root);
    owner = root.attribute("owner") ? idOf(root, "owner") : ElementId();
}

bool UnitDocument::parse(std::string_view text, Fault &fault) {
    const UnitHeader header = findHeader(text);
    if (auto bad = firstTextFault(text, header.end)) {
        fault = std::move(*bad);
        return false;
    }
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
        fault = {0, "the file is empty; expected a unit"};
        return false;
    }
    state_->buffer.assign(text);
    state_->buffer += '\n'; // the parser replaces the last character with a terminator
    // As a fragment, because otherwise the parser silently drops what is outside the root.
    constexpr unsigned options = pugi::parse_fragment | pugi::parse_comments | pugi::parse_pi |
                                 pugi::parse_doctype | pugi::parse_declaration | pugi::parse_cdata |
                                 pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata_single;
    const pugi::xml_parse_result result = state_->document.load_buffer_inplace(
        state_->buffer.data(), state_->buffer.size(), options, pugi::encoding_utf8);
    if (!result) {
        const auto found = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        fault.offset = std::min(found, text.size()); // the added character is not part of the file
        const std::size_t conflict = text.find("\n<<<<<<< ");
        if (conflict != std::string_view::npos) {
            fault = {conflict + 1, "the file holds a merge conflict; settle it and try again"};
        } else if (fault.offset + 2 >= text.find_last_not_of(" \t\r\n") + 1) {
            fault.text = "the file ends too early, or an element isn't closed; expected a complete unit file";
        } else {
            fault.text = std::string("this is not well-formed XML: ") + result.description();
        }
        return false;
    }
    try {
        state_->checkRoot();
    } catch (Refusal &refusal) {
        fault = std::move(refusal.fault);
        return false;
    }
    return true;
}

bool UnitDocument::fill(UnitElement &unit, Model *model, std::vector<UnitElement *> &listed, Fault &fault) {
    try {
        unit.setId(state_->id);
        unit.setModel(model);
        unit.set(UnitElement::stub, false);
        Filling(model, listed).fill(state_->root, unit, 0);
    } catch (Refusal &refusal) {
        fault = std::move(refusal.fault);
        return false;
    }
    return true;
}

} // namespace orchard
