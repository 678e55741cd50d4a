#include "CM/CMSupport/core/VariableScan.h"

namespace {

// Returns how many bytes at the end of a text could begin a variable that the following text completes.
std::size_t openEnd(std::string_view text) {
    if (text.ends_with('$')) {
        return 1;
    }
    return text.ends_with("${") ? 2 : 0;
}

} // namespace

std::optional<Variable> VariableScan::find() {
    auto found = findVariable(rest_, at_);
    if (found) {
        passed_.append(rest_, at_, found->at - at_);
        at_ = found->at;
        foundLength_ = static_cast<std::size_t>(found->text.GetLength());
    }
    return found;
}

void VariableScan::replace(std::string_view inserted) {
    at_ += foundLength_;
    foundLength_ = 0;
    const auto open = openEnd(passed_);
    if (open == 0 && inserted.find('$') == std::string_view::npos) {
        passed_ += inserted; // no variable can begin in it
        return;
    }
    const std::string again = passed_.substr(passed_.size() - open);
    passed_.resize(passed_.size() - open);
    pushFront(inserted);
    pushFront(again);
}

void VariableScan::pushFront(std::string_view text) {
    if (text.size() > at_) {
        // Adds as much free space as there is text, so that copying costs a constant time for each byte inserted.
        const auto remaining = rest_.size() - at_;
        const auto room = text.size() + remaining;
        std::string roomy(room + text.size(), '\0');
        roomy.append(rest_, at_, remaining);
        rest_ = std::move(roomy);
        at_ = room + text.size();
    }
    at_ -= text.size();
    rest_.replace(at_, text.size(), text);
}

std::string VariableScan::take() {
    passed_.append(rest_, at_);
    return std::move(passed_);
}
