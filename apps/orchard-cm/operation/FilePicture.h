// FilePicture: a file as it stands at one moment, for telling whether a tool has changed it.
#pragma once

#include <cstdint>
#include <string>

namespace orchard_cm {

struct FilePicture {
    bool exists = false;
    bool writable = false; ///< by the owner's permission bit
    std::uintmax_t size = 0;
    std::uint64_t digest =
        0; ///< of the content; good for telling two states of one file apart, not against forgery

    [[nodiscard]] bool sameContent(const FilePicture &other) const {
        return exists == other.exists && size == other.size && digest == other.digest;
    }
};

FilePicture pictureOf(const std::string &file);

} // namespace orchard_cm
