// Runs plainWords on any bytes: the words that it finds must be read as the same words after quoting.
#include "CM/platform/PlainWords.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view command(reinterpret_cast<const char *>(data), size);
    const auto words = platform::plainWords(command);
    if (!words) {
        return 0;
    }
    std::string quoted;
    for (const std::string &word : *words) {
        quoted += '\'';
        for (const char character : word) {
            quoted += character == '\'' ? "'\"'\"'" : std::string(1, character);
        }
        quoted += "' ";
    }
    if (platform::plainWords(quoted) != words) {
        std::abort();
    }
    return 0;
}
