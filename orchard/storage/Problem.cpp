#include "orchard/storage/Problem.h"

namespace orchard {

std::string Problem::message() const {
    std::string message = file;
    if (line > 0) {
        message += ':' + std::to_string(line) + ':' + std::to_string(column);
    }
    return message + ": " + text;
}

} // namespace orchard
