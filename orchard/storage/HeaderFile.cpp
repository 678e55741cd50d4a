#include "orchard/storage/HeaderFile.h"

#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace orchard {

namespace {

constexpr std::size_t firstRead = 4096;
constexpr std::size_t largestHeader = std::size_t{1} << 20U;
constexpr std::size_t firstLines = 2048;

} // namespace

HeaderRead readHeaderOf(const std::string &path) {
    OpenFile file(path);
    std::string part;
    for (std::size_t wanted = firstRead; file.fault().empty(); wanted *= 4) {
        wanted = std::min(wanted, largestHeader);
        const bool isComplete = file.readUpTo(wanted, part);
        if (!file.fault().empty()) {
            break;
        }
        const HeaderScan scan = scanHeader(part, isComplete);
        if (scan.state == HeaderScan::found) {
            return {std::string(scan.text), {}};
        }
        if (scan.state == HeaderScan::foreign) {
            return {{}, scan.fault};
        }
        if (wanted == largestHeader) {
            return {{}, "its header is longer than 1 MiB"};
        }
    }
    return {{}, file.fault()};
}

HeaderRead readFirstLinesOf(const std::string &path) {
    OpenFile file(path);
    std::string part;
    const bool isComplete = file.fault().empty() && file.readUpTo(firstLines, part);
    if (!file.fault().empty()) {
        return {{}, file.fault()};
    }
    if (part.find('\0') != std::string::npos) {
        return {};
    }
    if (!isComplete) {
        part.resize(part.rfind('\n') + 1); // nothing remains without a line end
    }
    return {std::move(part), {}};
}

} // namespace orchard
