#include "CM/CMSupport/command/ListingParser.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/IPN.h"
#include "CM/host/SPString.h"

#include <algorithm>
#include <utility>

namespace command {

namespace {

/// Returns the text after the last backslash or, only if there is none, after the last slash. Required, although
/// an item cuts the same path at whichever is last. Test:
/// ProjectFilter.CutsAtABackslashEvenIfASlashStandsFurtherRight.
std::string_view lastComponent(std::string_view path) {
    std::size_t last = path.rfind('\\');
    if (last == std::string_view::npos) {
        last = path.rfind('/');
    }
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

bool hasDotInFileName(std::string_view path) {
    const auto last =
        std::find_if(path.rbegin(), path.rend(), [](char c) { return c == '.' || c == '/' || c == '\\'; });
    return last != path.rend() && *last == '.';
}

} // namespace

ListingParser::Field::Field(const CString &key, bool traces) : key_(key), traces_(traces) {
    if (!traces_) {
        pattern_.emplace(key);
    }
}

int ListingParser::Field::extract(std::string_view record, std::string_view &value, int &wasSet) {
    if (traces_) {
        pattern_.emplace(key_); // each look-up leaves its own lines in the trace
    }
    return pattern_->extract(record, value, wasSet);
}

ListingParser::ListingParser(ListingRules rules)
    : rules_(std::move(rules)), traces_(isDebugTraceOn()), workingFile_(IPN::CMListArchiveItsWorkingFile, traces_),
      version_(IPN::CMListArchiveItsVersion, traces_), mode_(IPN::CMListArchiveItsMode, traces_),
      locker_(IPN::CMListArchiveItsLocker, traces_), modeCapturesLocker_(!traces_ && mode_.isSameAs(locker_)) {}

std::unique_ptr<CMArchiveItem> ListingParser::parse(std::string_view record) {
    std::string_view workingFile;
    int wasSet = 0;
    result_ = workingFile_.extract(record, workingFile, wasSet);
    if (traces_) {
        debugTrace({"Archive working file: '", workingFile, "'\n"});
    }
    if (isOfAnotherProject(workingFile) || result_ != 1 || wasSet == 0) {
        return nullptr; // this includes text that is not a record, such as a heading
    }

    const std::string_view version = extractOrEmpty(version_, record);
    if (traces_) {
        debugTrace({"Archive version: '", version, "'\n"});
    }

    std::string_view captured; // counts only if the locker has the same pattern
    int modeWasSet = 0;
    result_ = mode_.extract(record, captured, modeWasSet);
    if (traces_) {
        // Required: ReadWrite even for an empty pattern, for which the mode is unknown.
        // Test: TracedRecord.OfAnEmptyModePatternSaysReadWriteWhileTheModeIsUnknown.
        debugTrace({"Archive file mode: ", result_ == 1 ? "ReadWrite" : "ReadOnly", "\n"});
    }
    const CMArchiveItem::Mode mode = modeWasSet == 0 ? CMArchiveItem::unknown
                                     : result_ == 1  ? CMArchiveItem::readWrite
                                                     : CMArchiveItem::readOnly;

    const std::string_view locker = modeCapturesLocker_ ? captured : extractOrEmpty(locker_, record);
    if (traces_) {
        debugTrace({"Archive Locker: '", locker, "'\n"});
    }

    if (rules_.wantsADot && !hasDotInFileName(workingFile)) {
        return nullptr;
    }
    // The path stays as the tool printed it, with blanks and separators.
    return std::make_unique<CMArchiveItem>(
        CMArchiveItem::Listed{.fileNameWithPath = workingFile, .version = version, .mode = mode, .locker = locker},
        texts_);
}

std::string_view ListingParser::extractOrEmpty(Field &field, std::string_view record) {
    std::string_view value;
    int wasSet = 0;
    result_ = field.extract(record, value, wasSet);
    return result_ == 0 ? std::string_view() : value;
}

bool ListingParser::isOfAnotherProject(std::string_view workingFile) const {
    if (rules_.showsAll || workingFile.find(rules_.projectSuffix.view()) == std::string_view::npos) {
        return false;
    }
    return CString(lastComponent(workingFile)).Trim() != rules_.projectFile;
}

int parseListing(const CString &output, ListingRules rules, CMArchiveItemList &items) {
    const IProperty *const delimiter =
        CMProperty::getToolProperty(IPN::CMMultiRecordDelimiter, nullptr, IProperty::inherited, false);
    if (delimiter == nullptr) {
        return 1; // required: ListArchive.WithoutADelimiterThrowsTheOutputAwayAndGivesOne
    }
    ListingParser parser(std::move(rules));
    SPPattern(delimiter->getValue()).split(output, [&](std::string_view record) {
        if (auto item = parser.parse(record)) {
            CMArchiveItem *listed = item.get();
            items.AddTail(listed);
            static_cast<void>(item.release());
        }
    });
    return parser.result();
}

} // namespace command
