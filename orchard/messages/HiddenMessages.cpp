#include "orchard/messages/HiddenMessages.h"

#include "CM/host/LogTrace.h"
#include "orchard/base/UserDirectories.h"

#include <charconv>
#include <fstream>
#include <string>
#include <system_error>

namespace orchard {
namespace {

/// Returns the key as a single line.
std::string flattened(std::string_view key) {
    std::string text(key);
    for (char &c : text) {
        c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    return text;
}

bool isRegularFile(const std::filesystem::path &path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace

std::filesystem::path hiddenMessagesFile() {
    const auto directory = userDirectory();
    return directory.empty() ? directory : directory / "hidden-messages";
}

std::optional<int> hiddenMessageAnswer(std::string_view key) {
    const auto path = hiddenMessagesFile();
    if (!isRegularFile(path)) {
        return {}; // reading a pipe would block the program
    }
    std::ifstream file(path, std::ios::binary);
    const std::string wanted = flattened(key);
    std::optional<int> answer;
    for (std::string line; std::getline(file, line);) {
        int button = 0;
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), button);
        const auto length = static_cast<std::size_t>(end - line.data());
        if (error == std::errc() && length < line.size() &&
            line.compare(length + 1, std::string::npos, wanted) == 0) {
            answer = button;
        }
    }
    return answer;
}

void hideMessage(std::string_view key, int button) {
    const auto path = hiddenMessagesFile();
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file;
    if (isRegularFile(path) || !std::filesystem::exists(path, error)) {
        file.open(path, std::ios::app | std::ios::binary);
    } else {
        file.setstate(std::ios::failbit);
    }
    file << button << ' ' << flattened(key) << '\n' << std::flush;
    if (!file) {
        LogTrace::Log(LogTrace::Log::cm)
            .Min("orchard/messages", 0, "can't write " + path.string() + ": the box will be shown again");
    }
}

} // namespace orchard
