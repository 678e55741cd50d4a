// Checks which folders of the tree include which.
#pragma once

#include <filesystem>
#include <istream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace rooms {

/// The rooms that each room may include, itself among them.
using Table = std::map<std::string, std::set<std::string>>;

/// Reads a line for each room: its folder, then the folders that it may include. What these may include is allowed
/// as well. Throws std::runtime_error where a line names a room that no line above it describes, which rules out
/// circles.
Table readTable(std::istream &lines);

/// Returns every include in the folders of the table that the table does not allow, as "FILE:LINE: ROOM may not
/// include PATH", and every folder with sources that is not a room. The order is that of the file names.
std::vector<std::string> violations(const std::filesystem::path &root, const Table &table);

} // namespace rooms
