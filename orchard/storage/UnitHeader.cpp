#include "orchard/storage/UnitHeader.h"

#include "orchard/model/ElementKind.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orchard {

UnitHeader findHeader(std::string_view text) {
    const auto skipSpace = [&](std::size_t at) {
        return std::min(text.find_first_not_of(" \t\r\n", at), text.size());
    };
    std::size_t at = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    at = skipSpace(at);
    if (text.substr(at).starts_with("<?xml")) {
        const std::size_t close = text.find("?>", at);
        if (close == std::string_view::npos) {
            return {};
        }
        at = skipSpace(close + 2);
    }
    if (!text.substr(at).starts_with("<!--")) {
        return {{}, at};
    }
    const std::size_t close = text.find("-->", at + 4);
    if (close == std::string_view::npos) {
        return {};
    }
    std::string_view header = text.substr(at + 4, close - at - 4);
    const auto dropLineEnd = [&](bool front) {
        if (front && header.starts_with("\r\n")) {
            header.remove_prefix(2);
        } else if (front && header.starts_with('\n')) {
            header.remove_prefix(1);
        } else if (!front && header.ends_with('\n')) {
            header.remove_suffix(header.ends_with("\r\n") ? 2 : 1);
        }
    };
    dropLineEnd(true);
    dropLineEnd(false);
    return {header, skipSpace(close + 3)};
}

namespace {

constexpr std::string_view declarationStart = "<?xml";
constexpr std::string_view commentStart = "<!--";

/// Scans the first part of a file, one construct after another.
class Scan {
  public:
    Scan(std::string_view part, bool isComplete) : part_(part), isComplete_(isComplete) {}

    /// Whether this text is next. Returns false if the part ends too early to decide.
    [[nodiscard]] bool isAt(std::string_view text) const { return part_.substr(at_).starts_with(text); }
    [[nodiscard]] bool mayStartWith(std::string_view text) const {
        return !isComplete_ && text.starts_with(part_.substr(at_));
    }
    void skip(std::size_t bytes) { at_ += bytes; }
    void skipSpace() { at_ = std::min(part_.find_first_not_of(" \t\r\n", at_), part_.size()); }
    /// Skips past the end of a declaration or a comment; returns false if that is not in the part.
    [[nodiscard]] bool skipPast(std::string_view mark) {
        const std::size_t end = part_.find(mark, at_);
        at_ = end == std::string_view::npos ? part_.size() : end + mark.size();
        return end != std::string_view::npos;
    }
    /// The name of the tag that opens here, as far as the part contains it; empty if no tag opens.
    [[nodiscard]] std::string_view tagName() const {
        const std::string_view rest = part_.substr(at_);
        if (!rest.starts_with('<')) {
            return {};
        }
        return rest.substr(1, rest.find_first_of(" \t\r\n/>", 1) - 1);
    }
    [[nodiscard]] bool endsWith(std::string_view name) const { return at_ + name.size() + 1 >= part_.size(); }
    [[nodiscard]] bool isComplete() const { return isComplete_; }
    [[nodiscard]] bool atEnd() const { return at_ >= part_.size(); }

  private:
    std::string_view part_;
    std::size_t at_ = 0;
    bool isComplete_;
};

} // namespace

HeaderScan scanHeader(std::string_view part, bool isComplete) {
    const auto endsEarly = [&](const char *fault) {
        return HeaderScan{isComplete ? HeaderScan::foreign : HeaderScan::tooFew, {}, fault};
    };
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    Scan scan(part, isComplete);
    if (scan.mayStartWith(mark)) {
        return endsEarly("");
    }
    scan.skip(scan.isAt(mark) ? mark.size() : 0);
    for (const auto &[start, end] :
         {std::pair{declarationStart, std::string_view("?>")}, std::pair{commentStart, std::string_view("-->")}}) {
        scan.skipSpace();
        if (scan.mayStartWith(start)) {
            return endsEarly("");
        }
        if (scan.isAt(start)) {
            scan.skip(start.size());
            if (!scan.skipPast(end)) {
                return endsEarly("the comment or declaration at its top does not end");
            }
        }
    }
    scan.skipSpace();
    if (scan.atEnd()) {
        return endsEarly(part.empty() ? "it is empty" : "it ends after its header");
    }
    const std::string_view name = scan.tagName();
    if (!isComplete && scan.endsWith(name)) {
        // A few more bytes decide on the name; one longer than any known name can't become right.
        constexpr std::size_t longest = 16;
        if (name.size() <= longest) {
            return endsEarly("");
        }
    }
    const auto kind = kindWithTag(name);
    if (!kind || !isFileKind(*kind)) {
        return {HeaderScan::foreign, {}, "it is not a unit file"};
    }
    return {HeaderScan::found, findHeader(part).text, ""};
}

std::uint64_t bodyHashOf(std::string_view text) {
    text.remove_prefix(findHeader(text).end);
    std::string plain;
    if (text.find('\r') != std::string_view::npos) {
        plain = text;
        std::erase(plain, '\r');
        text = plain;
    }
    const std::uint64_t hash = std::hash<std::string_view>()(text);
    return hash == 0 ? 1 : hash;
}

} // namespace orchard
