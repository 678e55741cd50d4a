#include "providers/subversion/Output.h"

#include <cstdio>

namespace svnscc {

void Output::send(const char *line, unsigned long kind) {
    if (function_ == nullptr) {
        std::fprintf(stderr, "%s\n", line);
        return;
    }
    long answer = SCC_MSG_RTN_OK;
    try {
        answer = function_(line, kind);
    } catch (...) { // must not pass through the C functions that have led here
        answer = SCC_MSG_RTN_CANCEL;
    }
    isCancelled_ = isCancelled_ || (answer == SCC_MSG_RTN_CANCEL && hasCancelMode_);
}

void Output::write(std::string_view text, unsigned long kind) {
    while (true) {
        const std::size_t end = text.find('\n');
        send(std::string(text.substr(0, end)).c_str(), kind);
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

void Output::begin() {
    isCancelled_ = false;
    if (offersCancel()) {
        send("", SCC_MSG_STARTCANCEL);
    }
}

void Output::end() {
    if (offersCancel()) {
        send("", SCC_MSG_STOPCANCEL);
    }
    isCancelled_ = false;
}

bool Output::poll() {
    if (offersCancel() && !isCancelled_) {
        send("", SCC_MSG_DOCANCEL);
    }
    return isCancelled_;
}

} // namespace svnscc
