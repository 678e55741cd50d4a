#include "apps/orchard-cm/commands/ToolCheckAction.h"

#include "CM/host/IPN.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/toolcheck/SampleExpansion.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyData.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace orchard_cm {

namespace {

bool same(const std::string &left, const CString &right) { return right.CompareNoCase(left) == 0; }

/// Returns the properties of the tool's sets, for each key the one that takes effect.
std::vector<SetEntry> entriesOf(const std::string &tool) {
    std::vector<SetEntry> entries;
    for (const auto &set : orchard::installedPropertySets()) {
        for (const auto &entry : set.table().entries()) {
            const std::string key = entry.property->getName().str();
            if (same(entry.subject, IPN::CM) && same(entry.metaclass, tool) && entryOf(entries, key) == nullptr) {
                entries.push_back({key, entry.property->getValue().str(), entry.property->data().source});
            }
        }
    }
    return entries;
}

Json toJson(const std::vector<Finding> &findings) {
    Json list = Json::array();
    for (const Finding &finding : findings) {
        list.push_back({{"key", finding.key}, {"text", finding.text}});
        if (!finding.place.empty()) {
            list.back()["place"] = finding.place;
        }
    }
    return list;
}

Json toJson(const std::vector<Expanded> &commands) {
    Json list = Json::array();
    for (const Expanded &expanded : commands) {
        list.push_back({{"key", expanded.key}, {"full", expanded.isFull}, {"command", expanded.command}});
    }
    return list;
}

void write(std::ostream &out, const std::string &tool, const std::vector<Finding> &findings,
           const std::vector<Expanded> &commands) {
    out << "Commands of " << tool
        << " for a sample unit; a second line adds label, comment, archive and target directory:\n";
    for (const Expanded &least : commands) {
        if (least.isFull) {
            break; // the second half is shown next to the first
        }
        out << "  " << least.key << "\n      " << least.command << '\n';
        const auto full = std::ranges::find_if(
            commands, [&](const Expanded &other) { return other.isFull && other.key == least.key; });
        if (full != commands.end() && full->command != least.command) {
            out << "      " << full->command << '\n';
        }
    }
    out << (findings.empty() ? "No findings.\n" : "Findings:\n");
    for (const Finding &finding : findings) {
        out << "  " << finding.key << ": " << finding.text
            << (finding.place.empty() ? "" : " (" + finding.place + ")") << '\n';
    }
}

} // namespace

void ToolCheckAction::declare(CLI::App &app) {
    app.add_option("NAME", name_, "The tool whose property set is checked (see 'orchard-cm tools')")->required();
    app.footer(
        "Reports what is missing or wrong in the set, and the expansion of each command; nothing is run, and\n"
        "no project is needed. Exits with 1 if there is a finding.");
}

ExitCode ToolCheckAction::run(Context &context) {
    const std::string tool = installedToolNamed(name_);
    const auto entries = entriesOf(tool);
    if (entries.empty()) {
        throw Failure(ExitCode::failed, "there is no property set to check for '" + tool + "'");
    }
    auto findings = checkSet(entries);
    const SampleExpansions sample = expandForSample(tool, entries);
    findings.insert(findings.end(), sample.findings.begin(), sample.findings.end());
    context.output.result({{"tool", tool}, {"findings", toJson(findings)}, {"commands", toJson(sample.commands)}},
                          [&](std::ostream &out) { write(out, tool, findings, sample.commands); });
    return findings.empty() ? ExitCode::done : ExitCode::failed;
}

} // namespace orchard_cm
