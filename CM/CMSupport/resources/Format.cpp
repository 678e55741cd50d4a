#include "CM/CMSupport/resources/Format.h"

namespace resources {

std::string format(Text number, std::initializer_list<std::string_view> arguments) {
    constexpr std::string_view placeholder = "%s";
    std::string_view text = resources::text(number);
    std::string result;
    auto argument = arguments.begin();
    for (;;) {
        const auto found = text.find(placeholder);
        result += text.substr(0, found);
        if (found == std::string_view::npos) {
            return result;
        }
        if (argument != arguments.end()) {
            result += *argument++;
        }
        text.remove_prefix(found + placeholder.size());
    }
}

} // namespace resources
