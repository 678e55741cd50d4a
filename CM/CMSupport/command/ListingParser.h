// Makes archive items from the records of a tool's listing. The tool has a pattern for each of the four fields of
// an item.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/ItemTexts.h"
#include "CM/CMSupport/core/ToolPattern.h"
#include "CM/platform/CString.h"

#include <memory>
#include <optional>
#include <string_view>

namespace command {

/// Selects the files of a listing that are wanted.
struct ListingRules {
    CString projectFile;   ///< file name of the active project, without directory
    CString projectSuffix; ///< a file with this text anywhere in its path is a project file
    bool showsAll = false; ///< keeps the project files of other projects too
    bool wantsADot = true; ///< skips names without an extension
};

class ListingParser {
  public:
    /// Looks up the tool's patterns. If the debug trace is on, each extraction looks up its pattern instead.
    explicit ListingParser(ListingRules rules);

    /// Returns the item that the record describes; null if it contains no file of the archive, or one that is not
    /// wanted.
    std::unique_ptr<CMArchiveItem> parse(std::string_view record);
    /// Returns the result of the last extraction; 1 before the first one.
    [[nodiscard]] int result() const { return result_; }

  private:
    class Field {
      public:
        Field(const CString &key, bool traces);
        int extract(std::string_view record, std::string_view &value, int &wasSet);
        /// Returns whether both patterns are equal. Not to be called with the debug trace on.
        [[nodiscard]] bool isSameAs(const Field &other) const { return pattern_->isSameAs(*other.pattern_); }

      private:
        const CString &key_;
        bool traces_;
        std::optional<ToolPattern> pattern_; ///< with the debug trace on, empty before the first extraction
    };

    std::string_view extractOrEmpty(Field &field, std::string_view record);
    [[nodiscard]] bool isOfAnotherProject(std::string_view workingFile) const;

    ListingRules rules_;
    bool traces_; ///< the debug trace is on; it can't change during a listing
    Field workingFile_;
    Field version_;
    Field mode_;
    Field locker_;
    bool modeCapturesLocker_; ///< both patterns are equal, as for tools whose locked files are writable
    ItemTexts texts_;
    int result_ = 1;
};

/// Splits a tool's output into records and appends an item, created with `new`, for each wanted file. Returns the
/// result of the last extraction; 1 if there was none, or if the tool has no delimiter, so that the output is
/// discarded.
int parseListing(const CString &output, ListingRules rules, CMArchiveItemList &items);

} // namespace command
