#include "apps/orchard-cm/operation/FilePicture.h"

#include "CM/platform/Files.h"

#include <array>
#include <fstream>
#include <string_view>

namespace orchard_cm {

FilePicture pictureOf(const std::string &file) {
    FilePicture picture;
    std::ifstream stream(file, std::ios::binary);
    picture.exists = platform::fileExists(file);
    if (!picture.exists) {
        return picture;
    }
    picture.writable = platform::hasWritePermission(file);
    picture.digest = 0xcbf29ce484222325U; // FNV-1a
    std::array<char, 65536> buffer{};
    while (stream.read(buffer.data(), buffer.size()) || stream.gcount() > 0) {
        for (const char byte : std::string_view(buffer.data(), static_cast<std::size_t>(stream.gcount()))) {
            picture.digest = (picture.digest ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
        }
        picture.size += static_cast<std::uintmax_t>(stream.gcount());
    }
    return picture;
}

} // namespace orchard_cm
