// Compares the search for a conditional with one that cuts parts off the front of a copy.
#include "CM/CMSupport/core/CMProperty.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

struct Parts {
    int found = 0;
    int start = -1;
    int end = -1;
    CString ifPart;
    CString thenPart;
    CString elsePart;
    friend bool operator==(const Parts &, const Parts &) = default;
};

Parts cutFromTheFront(const CString &source) {
    const int start = source.Find('(');
    if (start < 0) {
        return {};
    }
    CString copy = source.Mid(start);
    const int question = copy.Find('?');
    if (question < 0) {
        return {};
    }
    Parts parts{1, start, -1, copy.Mid(1, question - 1), {}, {}};
    copy = copy.Mid(question);
    const int colon = copy.Find(':');
    if (colon >= 0) {
        parts.thenPart = copy.Mid(1, colon - 1);
        copy = copy.Mid(colon);
    }
    const int last = copy.ReverseFind(')');
    if (last < 0) {
        return {};
    }
    (colon >= 0 ? parts.elsePart : parts.thenPart) = copy.Mid(1, last - 1);
    parts.end = source.GetLength() - (copy.GetLength() - last);
    for (CString *part : {&parts.ifPart, &parts.thenPart, &parts.elsePart}) {
        part->Trim(" ");
    }
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const RecordingHost host;
    const CString source(std::string_view(reinterpret_cast<const char *>(data), size));
    Parts parts{7, 7, 7, "before", "before", "before"};
    CString scratch;
    parts.found = CMProperty::ExtractCondition(source, parts.start, parts.end, parts.ifPart, parts.thenPart,
                                               parts.elsePart, scratch);
    if (parts != cutFromTheFront(source)) {
        std::abort();
    }
    return 0;
}
