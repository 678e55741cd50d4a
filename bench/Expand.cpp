// Measures expanding check-out command lines, against a Perl program that does the same with the same patterns.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMUnit.h"
#include "CM/host/IPN.h"
#include "CM/host/Utilities.h"

#include <fstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr const char *tool = "Bench";
constexpr const char *labelText = "release 1";

// A property of the tool. Together the values hold a conditional, five variables (mode, label, Unit, UnitPath,
// archive) and one nested property (LabelPart).
struct ToolValue {
    const char *keyOfPeer;
    const CString &key;
    const char *value;
};

std::vector<ToolValue> toolValues() {
    static const CString labelPart = "LabelPart";
    return {{"CheckOut", IPN::CMCheckOut,
             R"(co -q $mode ($label ? $LabelPart : -f) -z"$Unit" "$UnitPath" "$archive")"},
            {"LabelPart", labelPart, "-r$label"},
            {"ReadWrite", IPN::CMReadWrite, "-l"},
            {"CMArchive", IPN::CMArchive, "$orpdirectory/archive"}};
}

void writeForPeer(const OpenProject &open, const std::vector<IUnit *> &units,
                  const std::filesystem::path &properties, const std::filesystem::path &names) {
    constexpr int levelOfProject = 2;
    std::ofstream out(properties);
    out << levelOfProject << "\tCMGeneral\tCMTool\t" << tool << '\n';
    for (const ToolValue &value : toolValues()) {
        out << levelOfProject << '\t' << tool << '\t' << value.keyOfPeer << '\t' << value.value << '\n';
    }
    CString root;
    CString error;
    oqGetRoot(root, error);
    out << "fact\t\troot\t" << root << "\nfact\t\tprojectname\t" << open.project().getFileName()
        << "\nfact\t\torpdirectory\t" << open.project().getProjectFileDirectory()
        << "\nfact\t\tprojectunitdirname\tbench_ory\nfact\t\ttemp\t" << oqGetTempDir() << "\nfact\t\tlabel\t"
        << labelText << '\n';
    std::ofstream list(names);
    for (const IUnit *const unit : units) {
        list << unit->getFullFileName() << '\n';
    }
}

std::vector<CString> expandAll(const std::vector<IUnit *> &units, int lines) {
    std::vector<CString> expanded;
    expanded.reserve(static_cast<std::size_t>(lines));
    CMMode mode(CMMode::readWrite);
    CMLabel label(labelText);
    CMArchive archive("");
    CMArgumentList arguments{&mode, &label, &archive};
    for (int at = 0; at < lines; ++at) {
        CMUnit unit(units[static_cast<std::size_t>(at) % units.size()]);
        arguments.AddTail(&unit);
        CString line;
        CString error;
        if (CMProperty::ExpandProperty(IPN::CMCheckOut, arguments, line, error, false) != 1) {
            throw std::runtime_error("could not expand: " + line.str());
        }
        arguments.RemoveTail();
        expanded.push_back(std::move(line));
    }
    return expanded;
}

void expectTheSame(const std::vector<CString> &ours, const std::filesystem::path &peers) {
    std::ifstream in(peers);
    std::string line;
    for (const CString &our : ours) {
        if (!std::getline(in, line) || line != our.str()) {
            throw std::runtime_error("the peer's line differs: '" + line + "' for '" + our.str() + "'");
        }
    }
}

} // namespace

bool expandCommandLines(const Setting &setting) {
    const auto directory = setting.scratch / "expand";
    OpenProject open(makeProject(directory, setting.scaled(1000), {}));
    open.set(IPN::CMGeneral, IPN::CMTool, tool);
    for (const ToolValue &value : toolValues()) {
        open.set(tool, value.key, value.value);
    }
    const std::vector<IUnit *> units = open.units();
    const auto properties = directory / "properties";
    const auto names = directory / "units";
    const auto lines = directory / "lines";
    const auto seconds = directory / "seconds";
    writeForPeer(open, units, properties, names);

    const int count = setting.scaled(100000);
    std::vector<CString> expanded;
    const auto ours = [&] {
        expanded.clear();
        return secondsOf([&] { expanded = expandAll(units, count); });
    };
    const auto peer = [&] {
        const std::string script = (setting.sources / "expand.pl").string();
        runPeer({"perl", script, properties.string(), names.string(), std::to_string(count), lines.string()},
                {.input = {}, .output = seconds.string()});
        double took = 0;
        std::ifstream(seconds) >> took;
        return took;
    };
    const Pair pair = measurePaired(setting.runs, ours, peer);
    expectTheSame(expanded, lines);
    const Row row = timedRow("expand " + std::to_string(count) + " check-out command lines / Perl, same patterns",
                             pair, 1.0 / 3);
    print(row);
    return row.ok();
}

} // namespace bench
