#include "providers/subversion/KeptCopy.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/Pool.h"

#include <svn_io.h>

namespace svnscc {

namespace {

/// The start of a name that leaves room for a number and a suffix, without half a character at its end.
std::string shortened(std::string name) {
    constexpr std::size_t limit = 200;
    if (name.size() > limit) {
        std::size_t end = limit;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
            --end;
        }
        name.resize(end);
    }
    return name;
}

} // namespace

std::string keepCopy(const std::string &path) {
    const Pool pool;
    const char *copy = nullptr;
    check(svn_io_open_uniquely_named(nullptr, &copy, directoryOf(path).c_str(), shortened(baseName(path)).c_str(),
                                     ".changed", svn_io_file_del_none, pool.get(), pool.get()));
    check(svn_io_copy_file(path.c_str(), copy, TRUE, pool.get()));
    return copy;
}

} // namespace svnscc
