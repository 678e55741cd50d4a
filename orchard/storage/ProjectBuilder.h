// Builds a project in memory and writes it to disk.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/NewProject.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

class ProjectBuilder {
  public:
    /// `path` is as for createSampleProject; `nextId` provides the identifiers.
    ProjectBuilder(const std::string &path, const std::string &tool, std::function<ElementId()> nextId);
    ~ProjectBuilder();

    [[nodiscard]] UnitElement &project() { return model_->project(); }
    /// A unit with a file of its own, named after it, and with a directory of its own if one is named.
    UnitElement &addUnit(Element &owner, Kind kind, std::string_view name, std::string_view description = {},
                         std::string_view directory = {});
    /// An element in its owner's file.
    Element &addElement(Element &owner, Kind kind, std::string_view name, std::string_view type = {});
    UnitElement &addEmbedded(Element &owner, std::string_view fileName, std::string_view text);
    /// The fragment of a code file that represents an element.
    Element &addFragment(Element &file, const Element &element);
    void setActive(const Element &component, const Element &configuration);

    /// Writes all files, the project file last. On failure, leaves no files.
    [[nodiscard]] NewProject write();

  private:
    [[nodiscard]] std::string refusal() const;
    [[nodiscard]] std::string writeAll();

    std::string file_;
    std::string fault_;
    std::function<ElementId()> nextId_;
    std::unique_ptr<Model> model_;
    std::vector<std::pair<const UnitElement *, std::string>> embedded_;
};

} // namespace orchard
