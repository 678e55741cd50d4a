#include "bench/Project.h"

#include "CM/host/IPN.h"
#include "orchard/storage/NewProject.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"

#include <stdexcept>

namespace bench {

OpenProject::OpenProject(const std::filesystem::path &projectFile) {
    const orchard::OpenResult result = orchard::openProject(projectFile.string());
    if (!result) {
        throw std::runtime_error(result.problems.empty() ? "can't open " + projectFile.string()
                                                         : result.problems.front().message());
    }
    project_ = result.project;
}

OpenProject::~OpenProject() { orchard::closeProject(project_); }

std::vector<IUnit *> OpenProject::units() const {
    std::vector<IUnit *> units;
    for (const orchard::UnitRow &row : orchard::workspaceUnits(*project_)) {
        if (row.unit != project_) {
            units.push_back(row.unit);
        }
    }
    return units;
}

void OpenProject::set(const CString &metaclass, const CString &key, const CString &value) {
    // A new property is created from an existing one; any will do.
    const IProperty *const other =
        project_->findProperty(IPN::CM, IPN::CMGeneral, IPN::CMTool, IProperty::inherited);
    if (other == nullptr) {
        throw std::runtime_error("the installed property sets are missing");
    }
    IProperty property(other);
    property.setName(key);
    property.setValue(value);
    project_->storeProperty(IPN::CM, metaclass, &property);
}

std::filesystem::path makeProject(const std::filesystem::path &directory, int units, const std::string &tool) {
    const orchard::NewProject made =
        orchard::createGeneratedProject((directory / "bench").string(), static_cast<std::size_t>(units), tool);
    if (!made) {
        throw std::runtime_error(made.error);
    }
    return made.projectFile;
}

std::filesystem::path largeProject(const std::filesystem::path &scratch, int units) {
    const auto directory = scratch / "large";
    const auto projectFile = directory / "bench.orp";
    return std::filesystem::exists(projectFile) ? projectFile : makeProject(directory, units, {});
}

CMUnitList listOf(const std::vector<IUnit *> &units) {
    CMUnitList list;
    for (IUnit *const unit : units) {
        list.AddTail(unit);
    }
    return list;
}

} // namespace bench
