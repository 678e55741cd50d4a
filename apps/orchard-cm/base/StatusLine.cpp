#include "apps/orchard-cm/base/StatusLine.h"

namespace orchard_cm {

namespace {
constexpr auto redrawEvery = std::chrono::milliseconds(100);
constexpr std::size_t longestStatus = 78; // a longer line would wrap and could not be erased
} // namespace

StatusLine::StatusLine(std::ostream &target, bool onTerminal)
    : target_(target), onTerminal_(onTerminal), stream_(this) {}

StatusLine::~StatusLine() { clear(); }

void StatusLine::show(std::string_view text) {
    const auto now = std::chrono::steady_clock::now();
    if (!onTerminal_ || (shown_ && now - lastShown_ < redrawEvery)) {
        return;
    }
    clear();
    if (text.size() > longestStatus) {
        std::size_t end = longestStatus;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end; // don't end with part of a character
        }
        text = text.substr(0, end);
    }
    target_ << text << std::flush;
    shown_ = true;
    lastShown_ = now;
}

void StatusLine::clear() {
    if (shown_) {
        target_ << "\r\x1b[K" << std::flush;
        shown_ = false;
    }
}

StatusLine::int_type StatusLine::overflow(int_type character) {
    clear();
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        target_.put(traits_type::to_char_type(character));
    }
    return traits_type::not_eof(character);
}

std::streamsize StatusLine::xsputn(const char *text, std::streamsize count) {
    clear();
    target_.write(text, count);
    return count;
}

int StatusLine::sync() {
    target_.flush();
    return 0;
}

} // namespace orchard_cm
