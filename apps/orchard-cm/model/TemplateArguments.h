// Provides the arguments that a command, such as check out, gives to the expansion of a template.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

#include <memory>
#include <string>
#include <vector>

class CMArchiveItem;
class IUnit;

namespace orchard_cm {

/// Owns arguments and their list, in the order in which they were added.
class TemplateArguments {
  public:
    TemplateArguments() = default;

    void addMode(bool readWrite);
    void addLabel(const std::string &label);
    void addLog(const std::string &log);
    /// An empty directory means the place where the tool's command puts its files by default.
    void addTargetDirectory(const std::string &directory);
    /// Every operation adds these after the caller's arguments: the project's archive, and the unit that it works
    /// on.
    void addArchive();
    void addUnit(const IUnit &unit);
    void addArchiveItem(const CMArchiveItem &item);
    /// Removes the last argument.
    void removeLast();

    [[nodiscard]] CMArgumentList &list() { return list_; }

  private:
    void add(std::unique_ptr<CMArgument> argument);

    std::vector<std::unique_ptr<CMArgument>> owned_;
    CMArgumentList list_;
};

} // namespace orchard_cm
