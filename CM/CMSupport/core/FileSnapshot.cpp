#include "CM/CMSupport/core/FileSnapshot.h"

#include "CM/platform/Files.h"

#include <array>
#include <fstream>
#include <functional>
#include <string_view>

FileSnapshot snapshotOf(const CString &file) {
    FileSnapshot snapshot{.exists = platform::fileExists(file)};
    std::ifstream stream;
    if (platform::isRegularFile(file)) {
        stream.open(file.str(), std::ios::binary);
    }
    std::array<char, 65536> buffer{};
    while (stream.read(buffer.data(), buffer.size()) || stream.gcount() > 0) {
        const std::string_view part(buffer.data(), static_cast<std::size_t>(stream.gcount()));
        snapshot.size += part.size();
        constexpr std::size_t factor = 31; // the order of the parts counts
        snapshot.digest = snapshot.digest * factor + std::hash<std::string_view>{}(part);
    }
    return snapshot;
}
