// Reports what is missing or wrong in a property set ("tool check").
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <string>

namespace orchard_cm {

class ToolCheckAction : public Command {
  public:
    void declare(CLI::App &app) override;
    ExitCode run(Context &context) override;

  private:
    std::string name_;
};

} // namespace orchard_cm
