// Reads listings of hostile tools with hostile patterns. The first five lines are the delimiter and the patterns
// of working file, version, mode and locker ("-" for a missing property); the sixth has the options: "a" for all
// project files, "d" for names without a dot. The rest is the listing. Every reading ends, gives the result of
// reading record by record, and gives the same result, line for line, with the trace on.
#include "CM/CMSupport/command/ListingParser.h"
#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/IPN.h"
#include "CM/host/SPString.h"
#include "orchard/text/CompiledPattern.h"
#include "orchard/text/PatternReport.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::string_view takeLine(std::string_view &text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

/// The minimum time before a pattern is stopped.
constexpr std::chrono::milliseconds leastTimeOfAPattern{15};

/// Slow patterns are left to fuzz_pattern.
bool isSlow(std::string_view pattern, std::string_view text) {
    const auto start = std::chrono::steady_clock::now();
    const orchard::CompiledPattern compiled(pattern, "i");
    orchard::TimeAllowance time(std::chrono::milliseconds(10));
    std::vector<orchard::Span> spans;
    compiled.search(text, 0, false, time, spans);
    return std::chrono::steady_clock::now() - start > std::chrono::milliseconds(10);
}

struct Listing {
    int result = 1;
    std::vector<std::string> items;
};

std::string textOf(const CMArchiveItem &item) {
    return item.getFileNameWithPath().str() + '|' + item.getVersion().str() + '|' +
           std::to_string(static_cast<int>(item.getMode())) + '|' + item.getLocker().str() + '|' +
           item.getStatus().str();
}

Listing parsed(const CString &text, const command::ListingRules &rules) {
    Listing listing;
    CMArchiveItemListWrapper items;
    listing.result = command::parseListing(text, rules, items.list());
    for (const CMArchiveItem *const item : items.list()) {
        listing.items.push_back(textOf(*item));
    }
    return listing;
}

/// Reads the listing with copies and with a look-up for each field of each record.
Listing readStepByStep(const CString &text, const command::ListingRules &rules) {
    Listing listing;
    const IProperty *const delimiter =
        CMProperty::getToolProperty(IPN::CMMultiRecordDelimiter, nullptr, IProperty::inherited, false);
    if (delimiter == nullptr) {
        return listing;
    }
    SPStringList records(20);
    records.split(text, delimiter->getValue(), -1);
    while (records.count() > 0) {
        const CString record = records.shift();
        CString file;
        CString version;
        CString unused;
        CString locker;
        CString error;
        int wasSet = 0;
        listing.result =
            CMProperty::ExtractByProperty(IPN::CMListArchiveItsWorkingFile, record, file, wasSet, error);
        debugTrace({"Archive working file: '", file, "'\n"});
        if (!rules.showsAll && file.Find(rules.projectSuffix) >= 0) {
            CString name = file;
            const int last = name.ReverseFind('\\') >= 0 ? name.ReverseFind('\\') : name.ReverseFind('/');
            name = name.Mid(last + 1);
            name.TrimLeft();
            name.TrimRight();
            if (name != rules.projectFile) {
                continue;
            }
        }
        if (listing.result != 1 || wasSet == 0) {
            continue;
        }
        listing.result =
            CMProperty::ExtractByProperty(IPN::CMListArchiveItsVersion, record, version, wasSet, error);
        debugTrace({"Archive version: '", version, "'\n"});
        int modeWasSet = 0;
        listing.result =
            CMProperty::ExtractByProperty(IPN::CMListArchiveItsMode, record, unused, modeWasSet, error);
        debugTrace({"Archive file mode: ", listing.result == 1 ? "ReadWrite" : "ReadOnly", "\n"});
        const auto mode = modeWasSet == 0       ? CMArchiveItem::unknown
                          : listing.result == 1 ? CMArchiveItem::readWrite
                                                : CMArchiveItem::readOnly;
        listing.result = CMProperty::ExtractByProperty(IPN::CMListArchiveItsLocker, record, locker, wasSet, error);
        debugTrace({"Archive Locker: '", locker, "'\n"});
        const CMArchiveItem item(file, version, mode, locker, CString());
        if (!rules.wantsADot || item.getFileName().Find('.') >= 0) {
            listing.items.push_back(textOf(item));
        }
    }
    return listing;
}

bool same(const Listing &left, const Listing &right) {
    return left.result == right.result && left.items == right.items;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    orchard::setPatternReporter([](const orchard::PatternProblem &) {});
    std::string_view text(reinterpret_cast<const char *>(data), size);
    RecordingHost host;
    CMProperty::ResetIfActiveProjectChanged();
    host.addProject();
    host.addConfiguration("Release", host.addComponent("Main"));
    host.setTool("Fuzz");
    std::vector<std::string_view> patterns;
    for (const CString *const key :
         {&IPN::CMMultiRecordDelimiter, &IPN::CMListArchiveItsWorkingFile, &IPN::CMListArchiveItsVersion,
          &IPN::CMListArchiveItsMode, &IPN::CMListArchiveItsLocker}) {
        const std::string_view pattern = takeLine(text);
        if (pattern != "-") {
            host.setToolDefault("Fuzz", *key, CString(pattern));
            patterns.push_back(pattern);
        }
    }
    const std::string_view flags = takeLine(text);
    for (const std::string_view pattern : patterns) {
        if (isSlow(pattern, text)) {
            return 0;
        }
    }
    const command::ListingRules rules{.projectFile = "Plant.ory",
                                      .projectSuffix = ".ory",
                                      .showsAll = flags.find('a') != std::string_view::npos,
                                      .wantsADot = flags.find('d') == std::string_view::npos};
    const CString output(text);
    const auto start = std::chrono::steady_clock::now();
    // A pattern that is stopped gets less time at the next attempt, so it may find something else.
    const auto checkSame = [start](bool same) {
        check(same || std::chrono::steady_clock::now() - start > leastTimeOfAPattern);
    };
    const Listing listing = parsed(output, rules);
    checkSame(same(listing, readStepByStep(output, rules)));

    std::ostringstream shown;
    getMainCMOutputer()() = &shown;
    host.setSetting("DEBUG_CM", "TRUE");
    checkSame(same(listing, parsed(output, rules)));
    const std::string trace = shown.str();
    shown.str({});
    checkSame(same(listing, readStepByStep(output, rules)));
    getMainCMOutputer()() = nullptr;
    checkSame(trace == shown.str());
    return 0;
}
