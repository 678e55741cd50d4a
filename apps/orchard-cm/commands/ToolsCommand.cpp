#include "apps/orchard-cm/commands/Commands.h"

#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/model/Tools.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

std::string joined(const std::vector<std::string> &files) {
    std::string text;
    for (const auto &file : files) {
        text += (text.empty() ? "" : ", ") + file;
    }
    return text;
}

class ToolsCommand : public Command {
  public:
    void declare(CLI::App & /*app*/) override {}

    ExitCode run(Context &context) override {
        const auto tools = installedTools();
        Json list = Json::array();
        for (const auto &tool : tools) {
            list.push_back({{"name", tool.name},
                            {"description", tool.description},
                            {"file", tool.files.front()},
                            {"files", tool.files}});
        }
        context.output.result({{"tools", std::move(list)}}, [&](std::ostream &out) {
            Table table{"TOOL", "DESCRIPTION", "PROPERTY SET"};
            for (const auto &tool : tools) {
                table.add({tool.name, tool.description, joined(tool.files)});
            }
            table.write(out);
        });
        if (tools.empty()) {
            throw Failure(ExitCode::failed, "no property sets are installed",
                          "Set ORCHARD_SHARE to the directory that contains Orchard's property sets.");
        }
        return ExitCode::done;
    }
};

} // namespace

std::unique_ptr<Command> makeToolsCommand() { return std::make_unique<ToolsCommand>(); }

} // namespace orchard_cm
