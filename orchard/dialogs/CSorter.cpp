#include "CM/host/DialogHelpers.h"

#include <algorithm>
#include <vector>

CSorter::Records CSorter::sort(const Records &records, std::size_t offset,
                               int (*compare)(const char *, const char *)) {
    const auto text = [key = offset / sizeof(void *)](void *const *record) {
        const auto *const found = static_cast<const char *>(record[key]);
        return found == nullptr ? "" : found;
    };
    std::vector<void **> sorted(records.begin(), records.end());
    std::ranges::stable_sort(
        sorted, [compare](const char *left, const char *right) { return compare(left, right) < 0; }, text);
    Records result;
    for (void **const record : sorted) {
        result.AddTail(record);
    }
    return result;
}
