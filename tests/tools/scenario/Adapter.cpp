#include "tests/tools/scenario/Adapter.h"

#include <sstream>
#include <stdexcept>

namespace scenario {

std::string Adapter::must(const std::string &command) {
    const tools::Ran ran = place_.shell(command);
    if (ran.exit != 0) {
        throw std::runtime_error(command + "\nended with " + std::to_string(ran.exit) + ": " + ran.out + ran.err);
    }
    return ran.out;
}

std::string Adapter::there(const std::string &command) {
    return must("cd " + tools::quoted(units_.string()) + " && " + command);
}

std::filesystem::path Adapter::bobsPlace() {
    std::filesystem::path directory = place_.directory() / "bob's";
    std::filesystem::remove_all(directory);
    std::filesystem::create_directory(directory);
    return directory;
}

std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(" \t\n") + 1);
    text.erase(0, text.find_first_not_of(" \t\n"));
    return text;
}

std::unique_ptr<Adapter> makeAdapter(const std::string &tool, tools::Workplace &place,
                                     const std::filesystem::path &units) {
    const auto make = tool == "RCS"          ? makeRcsAdapter
                      : tool == "CVS"        ? makeCvsAdapter
                      : tool == "Subversion" ? makeSubversionAdapter
                      : tool == "Git"        ? makeGitAdapter
                      : tool == "Mercurial"  ? makeMercurialAdapter
                                             : nullptr;
    if (make == nullptr) {
        throw std::invalid_argument("no adapter for " + tool);
    }
    return make(place, units);
}

} // namespace scenario
