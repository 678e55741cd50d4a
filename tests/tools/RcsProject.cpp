#include "tests/tools/RcsProject.h"

#include <cstdlib>
#include <stdexcept>

namespace tools {

namespace fs = std::filesystem;

RcsProject::RcsProject() {
    const Ran made = cm({"new", (project() / "station").string(), "--tool", "RCS"});
    if (made.exit != 0) {
        throw std::runtime_error("no project: " + made.err);
    }
    const std::string units = quoted((project() / "station_ory").string());
    must("find " + units + " -depth -type d -exec mkdir {}/RCS \\;");
    must("find " + units + " -type f ! -name '*,v' -exec ci -q -u -t-unit -m'first version' {} \\;");
}

void RcsProject::lockProject() { must("co -q -f -l " + quoted(fileOf("station").string())); }

void RcsProject::must(const std::string &command) {
    const Ran ran = shell(command);
    if (ran.exit != 0) {
        throw std::runtime_error(command + ": " + ran.out + ran.err);
    }
}

Ran RcsProject::onProject(std::vector<std::string> words, const std::string &input) {
    words.insert(words.begin(), {"-p", projectFile().string()});
    return cm(words, input);
}

nlohmann::json RcsProject::show(const std::string &unit) {
    const Ran ran = onProject({"--json", "show", unit});
    if (ran.exit != 0) {
        throw std::runtime_error("show " + unit + ": " + ran.out + ran.err);
    }
    return ran.json()["unit"];
}

fs::path RcsProject::fileOf(const std::string &unit) {
    for (const auto &entry : fs::recursive_directory_iterator(project() / "station_ory")) {
        const fs::path &path = entry.path();
        const bool named = path.filename() == unit || (path.stem() == unit && !path.string().ends_with(",v"));
        if (named && entry.is_regular_file()) {
            return path;
        }
    }
    throw std::runtime_error("no unit file " + unit);
}

fs::path RcsProject::archiveOf(const fs::path &file) {
    return file.parent_path() / "RCS" / (file.filename().string() + ",v");
}

std::string RcsProject::elsewhere(const fs::path &file) {
    const fs::path place = directory() / "elsewhere";
    fs::remove_all(place);
    fs::create_directory(place);
    fs::create_directory_symlink(file.parent_path() / "RCS", place / "RCS");
    return "cd " + quoted(place.string()) + " && ";
}

void RcsProject::changeElsewhere(const std::string &user, const fs::path &file, const std::string &from,
                                 const std::string &to) {
    const std::string name = quoted(file.filename().string());
    const std::string there = elsewhere(file);
    becomeUser(user);
    must(there + "co -q -l " + name + " && sed -i " + quoted("s|" + from + "|" + to + "|") + " " + name +
         " && ci -q -u -m'a change' " + name + " && ! rcsdiff -q -r1.1 " + name + " >/dev/null");
    becomeUser("anna");
}

void RcsProject::lockElsewhere(const std::string &user, const fs::path &file) {
    const std::string there = elsewhere(file);
    becomeUser(user);
    must(there + "co -q -l " + quoted(file.filename().string()));
    becomeUser("anna");
}

std::string RcsProject::locksOf(const fs::path &file) {
    const std::string text = shell("rlog -h " + quoted(file.string())).out;
    const auto begin = text.find("locks:");
    const auto end = text.find("access list:");
    std::string locks;
    for (const char character : text.substr(begin, end - begin).substr(text.find('\n', begin) + 1 - begin)) {
        if (character != '\t' && character != '\n') {
            locks += character;
        }
    }
    return locks;
}

void RcsProject::replaceProgram(const std::string &name, const std::string &body) {
    const fs::path bin = directory() / "bin";
    fs::create_directories(bin);
    write(bin / name, "#!/bin/sh\n" + body + "\n");
    makeExecutable(bin / name);
    const char *const path = std::getenv("PATH");
    setEnvironment("PATH", bin.string() + ":" + (path == nullptr ? "/usr/bin:/bin" : path));
}

} // namespace tools
