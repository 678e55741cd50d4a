#include "orchard/storage/ProjectFile.h"

#include "orchard/model/ElementKind.h"
#include "orchard/model/Paths.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace orchard {

namespace {

constexpr std::string_view firstLine = "orchard-project 1";

bool readNumber(std::string_view text, long &number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

bool ProjectFile::parse(std::string_view text, Fault &fault) {
    *this = {};
    std::size_t at = 0;
    bool first = true;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string_view word = line.substr(0, blank);
        const std::string_view value = line.substr(std::min(blank + 1, line.size()));
        const auto refuse = [&](std::size_t offset, std::string why) {
            fault = {at + offset, std::move(why)};
            return false;
        };
        const auto readId = [&](ElementId &id, std::string_view digits) {
            const auto parsed = ElementId::parse(digits);
            id = parsed.value_or(ElementId());
            return parsed.has_value() ||
                   refuse(blank + 1, "expected an identifier: 32 hexadecimal digits in groups of 8-4-4-4-12");
        };
        if (first) {
            if (line != firstLine) {
                return refuse(0, "this is not a project file in a format that this program reads; expected \"" +
                                     std::string(firstLine) + "\"");
            }
            first = false;
        } else if (word == "units") {
            if (const std::string bad = faultOfFileName(value); !bad.empty()) {
                return refuse(blank + 1, "the name of the units directory is refused: " + bad);
            }
            unitsDirectory = value;
        } else if (word == "component") {
            if (!readId(component, value)) {
                return false;
            }
        } else if (word == "configuration") {
            if (!readId(configuration, value)) {
                return false;
            }
        } else if (word == "stub") {
            if (!readId(stubs.emplace_back(), value)) {
                return false;
            }
        } else if (word == "state") {
            const std::size_t idEnd = std::min(value.find(' '), value.size());
            auto &[id, state] = states.emplace_back();
            if (!readId(id, value.substr(0, idEnd))) {
                return false;
            }
            if (!readNumber(value.substr(std::min(idEnd + 1, value.size())), state)) {
                return refuse(std::min(blank + 1 + idEnd + 1, line.size()),
                              "expected a number, the state of the unit");
            }
        } else if (!line.empty()) {
            return refuse(0, "expected a line that begins with \"units\", \"component\", \"configuration\", "
                             "\"stub\" or \"state\"");
        }
        at = end + 1;
    }
    if (unitsDirectory.empty()) {
        fault = {text.size(), first ? "the file is empty; expected \"" + std::string(firstLine) + "\""
                                    : "the units directory is not named; expected a line \"units NAME\""};
        return false;
    }
    return true;
}

std::string ProjectFile::text() const {
    std::string text(firstLine);
    text += "\nunits " + unitsDirectory + "\n";
    if (!component.empty()) {
        text += "component " + component.text() + "\n";
    }
    if (!configuration.empty()) {
        text += "configuration " + configuration.text() + "\n";
    }
    for (const ElementId &stub : stubs) {
        text += "stub " + stub.text() + "\n";
    }
    for (const auto &[id, state] : states) {
        text += "state " + id.text() + ' ' + std::to_string(state) + "\n";
    }
    return text;
}

std::string unitsDirectoryName(std::string_view project) {
    // The extension of project units, with '_' for its first character.
    return std::string(project) + "_" + (traitsOf(Kind::project).extension + 1);
}

} // namespace orchard
