#include "apps/orchard-cm/base/EditedText.h"

#include <algorithm>

namespace orchard_cm {

namespace {

constexpr std::size_t mostNames = 50;

/// Calls `take` with each line, without its end.
template <class TAKE> void forEachLine(std::string_view text, TAKE take) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        take(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace

std::string remarksFor(std::string_view done, const std::vector<std::string> &names) {
    std::string text =
        "\n# Write the comment above. Lines that begin with '#' are ignored, and without a comment\n"
        "# nothing is done. To be " +
        std::string(done) + ":\n";
    for (std::size_t i = 0; i < names.size() && i < mostNames; ++i) {
        text += "#     " + names[i] + "\n";
    }
    if (names.size() > mostNames) {
        text += "#     and " + std::to_string(names.size() - mostNames) + " more\n";
    }
    return text;
}

std::string withoutRemarks(std::string_view text) {
    std::string kept;
    forEachLine(text, [&](std::string_view line) {
        if (!line.starts_with('#')) {
            kept.append(line).append("\n");
        }
    });
    return kept;
}

std::string tidied(std::string_view text) {
    std::string tidy;
    forEachLine(text, [&](std::string_view line) {
        const auto last = line.find_last_not_of(" \t\r");
        line = line.substr(0, last == std::string_view::npos ? 0 : last + 1);
        if (!line.empty() || !tidy.empty()) {
            tidy.append(line).append("\n");
        }
    });
    tidy.erase(tidy.find_last_not_of('\n') + 1);
    return tidy;
}

} // namespace orchard_cm
