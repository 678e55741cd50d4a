#include "orchard/model/FileState.h"

#include <algorithm>
#include <array>
#include <sys/vfs.h>

namespace orchard {

bool FileState::keepsChangeTimes(const char *path) {
    // Magic numbers of Linux, statfs(2): FAT, exFAT, SMB (three), NFS, Ceph, 9P, FUSE.
    constexpr std::array<std::uint32_t, 9> others{0x4d44,     0x2011bab0, 0x517b,     0xff534d42, 0xfe534d42,
                                                  0x00006969, 0x00c36400, 0x01021997, 0x65735546};
    struct statfs system {};
    return ::statfs(path, &system) == 0 &&
           std::ranges::find(others, static_cast<std::uint32_t>(system.f_type)) == others.end();
}

} // namespace orchard
