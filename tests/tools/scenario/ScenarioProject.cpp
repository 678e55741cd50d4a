#include "tests/tools/scenario/ScenarioProject.h"

#include <stdexcept>

namespace scenario {

namespace fs = std::filesystem;

Names hardNames() {
    return {.project = "Die Stätion",
            .pump = "-x Pümpe",
            .valve = "Großes Ventil",
            .renamed = "--help ß",
            .control = "-r Über wachung",
            .controller = "-m Regler @1",
            .operators = "Bedien platz",
            .plan = "-verdrahtung 1 ü.txt"};
}

Project::Project(const std::string &tool, Names names) : names_(std::move(names)) {
    const tools::Ran made = cm({"new", "Püm pe/" + names_.project, "--tool", tool});
    if (made.exit != 0) {
        throw std::runtime_error("no project: " + made.out + made.err);
    }
    // A second subsystem with its own directory.
    const std::string root = names_.project + ".ory";
    fs::create_directory(units() / "Operator");
    fs::rename(units() / "Operator.osb", units() / "Operator/Operator.osb");
    fs::rename(units() / "Panel.ocl", units() / "Operator/Panel.ocl");
    edit(root, "file=\"Operator.osb\"", "directory=\"Operator\" file=\"Operator.osb\"");

    call("", "Drives.osb", ".ocl", "Pump", names_.pump);
    call("", "Drives.osb", ".ocl", "Valve", names_.valve);
    call("Control/", "Control/Control.osb", ".ocl", "PumpController", names_.controller);
    for (const auto &[from, to] : {std::pair("Control", names_.control), {"Operator", names_.operators}}) {
        const std::string directory = std::string(from) + "/";
        call(directory, root, ".osb", from, to);
        if (to != from) {
            edit(root, "directory=\"" + std::string(from) + "\"", "directory=\"" + to + "\"");
            fs::rename(units() / from, units() / to);
        }
    }
    if (names_.plan != "wiring.txt") {
        fs::rename(units() / "wiring.txt", units() / names_.plan);
        edit(root, "file=\"wiring.txt\"", "file=\"" + names_.plan + "\"");
    }
    adapter_ = makeAdapter(tool, *this, units());
}

void Project::call(const std::string &directory, const std::string &owner, const std::string &extension,
                   const std::string &from, const std::string &to) {
    if (from != to) {
        edit(directory + from + extension, "<name>" + from + "</name>", "<name>" + to + "</name>");
        edit(owner, "file=\"" + from + extension + "\"", "file=\"" + to + extension + "\"");
        fs::rename(units() / (directory + from + extension), units() / (directory + to + extension));
    }
}

tools::Ran Project::run(std::vector<std::string> words, const std::vector<std::string> &items) {
    words.insert(words.begin(), {"-p", "Püm pe/" + names_.project + ".orp"});
    if (!items.empty()) {
        words.emplace_back("--");
        words.insert(words.end(), items.begin(), items.end());
    }
    return cm(words);
}

std::set<std::size_t> Project::failedLines(const std::string &lines) {
    const tools::Ran ran =
        cm({"-p", "Püm pe/" + names_.project + ".orp", "--json", "batch", "--keep-going"}, lines);
    std::vector<std::string> objects = linesOf(ran.out);
    const auto told = nlohmann::json::parse(objects.empty() ? std::string() : objects.back(), nullptr, false);
    if (!told.contains("failedLines")) {
        throw std::runtime_error("a batch that did not get to its end: " + ran.out + ran.err);
    }
    return told["failedLines"].get<std::set<std::size_t>>();
}

nlohmann::json Project::show(const std::string &unit) { return run({"--json", "show"}, {unit}).json()["unit"]; }

std::set<std::string> Project::files() const {
    std::set<std::string> names;
    for (fs::recursive_directory_iterator at(units()), end; at != end; ++at) {
        const std::string name = at->path().filename().string();
        const bool ofTheTool = name == "RCS" || name == "CVS" || name.starts_with(".");
        if (at->is_directory() && ofTheTool) {
            at.disable_recursion_pending();
        } else if (at->is_regular_file() && !ofTheTool) {
            names.insert(at->path().lexically_relative(units()).string());
        }
    }
    return names;
}

void Project::edit(const std::string &file, const std::string &from, const std::string &to) {
    std::string content = text(file);
    const auto at = content.find(from);
    if (at == std::string::npos) {
        throw std::runtime_error(file + " holds no " + from + ":\n" + content);
    }
    write(units() / file, content.replace(at, from.size(), to));
}

bool Project::isWritable(const std::string &file) const {
    return (fs::status(units() / file).permissions() & fs::perms::owner_write) != fs::perms::none;
}

} // namespace scenario
