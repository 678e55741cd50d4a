// Parses and checks the text of one unit file and fills a unit from it.
//
// A unit file is one root element named after the kind of the unit, behind an optional header:
//
//     <?xml version="1.0" encoding="UTF-8"?>
//     <!--
//     $Id$
//     -->
//     <class format="1" id="..." owner="...">
//       <name>Valve</name>
//       <description>...</description>
//       <property subject="..." metaclass="..." name="..." type="...">value</property>
//       <attribute id="...">
//         <name>position</name>
//         <type>int</type>
//       </attribute>
//       <unit kind="class" id="..." file="Seat.ocl"/>
//     </class>
//
// Anything else is refused with its place: an element or attribute that is not known, a document type, a
// processing instruction, a comment in the body, a second root. Only the entities that XML predefines are known,
// so nothing is ever fetched or expanded.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/FileText.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

class UnitDocument {
  public:
    UnitDocument();
    ~UnitDocument();
    UnitDocument(const UnitDocument &) = delete;
    UnitDocument &operator=(const UnitDocument &) = delete;

    /// Parses and checks the root. One object may read several texts in turn; it keeps none of them.
    [[nodiscard]] bool parse(std::string_view text, Fault &fault);

    /// After a successful parse: the contents of the root.
    [[nodiscard]] Kind kind() const;
    [[nodiscard]] const ElementId &id() const;
    /// The identifier of the owner; empty if the file does not name it.
    [[nodiscard]] const ElementId &owner() const;
    [[nodiscard]] std::size_t rootOffset() const;

    /// Fills a unit of the same kind, which must have neither children nor properties, and sets the model of all
    /// new elements. Units with files of their own become stubs and are appended to `listed`.
    [[nodiscard]] bool fill(UnitElement &unit, Model *model, std::vector<UnitElement *> &listed, Fault &fault);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace orchard
