#include "bench/Resident.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

double largestResidentBytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kibibytes = 0;
    while (status >> word) {
        if (word == "VmHWM:" && status >> kibibytes) {
            return kibibytes * 1024;
        }
    }
    throw std::runtime_error("/proc/self/status does not tell the resident size");
}

} // namespace bench
