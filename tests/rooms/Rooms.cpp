#include "tests/rooms/Rooms.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace rooms {

namespace fs = std::filesystem;

namespace {

/// Returns what an include in quotes names; empty for any other line.
std::string included(const std::string &line) {
    constexpr std::string_view start = "#include \"";
    if (!line.starts_with(start)) {
        return {};
    }
    return line.substr(start.size(), line.find('"', start.size()) - start.size());
}

std::set<std::string> sourcesBelow(const fs::path &root, const Table &table) {
    std::set<std::string> tops;
    for (const auto &[room, allowed] : table) {
        tops.insert(room.substr(0, room.find('/')));
    }
    std::set<std::string> sources;
    for (const std::string &top : tops) {
        if (!fs::is_directory(root / top)) {
            continue;
        }
        for (const auto &entry : fs::recursive_directory_iterator(root / top)) {
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
                sources.insert(entry.path().lexically_relative(root).generic_string());
            }
        }
    }
    return sources;
}

} // namespace

Table readTable(std::istream &lines) {
    Table table;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string room;
        if (!(words >> room)) {
            continue;
        }
        std::set<std::string> allowed{room};
        for (std::string other; words >> other;) {
            const auto known = table.find(other);
            if (known == table.end()) {
                throw std::runtime_error(room + " names " + other + ", which is not a room above it");
            }
            allowed.insert(known->second.begin(), known->second.end());
        }
        if (!table.emplace(room, allowed).second) {
            throw std::runtime_error(room + " is there twice");
        }
    }
    return table;
}

std::vector<std::string> violations(const fs::path &root, const Table &table) {
    std::vector<std::string> found;
    for (const std::string &source : sourcesBelow(root, table)) {
        const auto room = table.find(fs::path(source).parent_path().generic_string());
        if (room == table.end()) {
            found.push_back(source + ": its folder is not a room");
            continue;
        }
        std::ifstream stream(root / source);
        std::size_t number = 0;
        for (std::string line; std::getline(stream, line);) {
            ++number;
            const std::string path = included(line);
            if (!path.empty() && !room->second.contains(fs::path(path).parent_path().generic_string())) {
                found.push_back(source + ":" + std::to_string(number) + ": " + room->first + " may not include " +
                                path);
            }
        }
    }
    return found;
}

} // namespace rooms
