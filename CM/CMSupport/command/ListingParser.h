// ListingParser: what a record of a tool's listing says about one file of the archive. The tool's four patterns
// say where in the record it stands.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/ItemTexts.h"
#include "CM/CMSupport/core/ToolPattern.h"
#include "CM/platform/CString.h"

#include <memory>
#include <optional>
#include <string_view>

namespace command {

/// Which files of a listing are wanted.
struct ListingRules {
    CString projectFile;   ///< file name of the active project, without directory
    CString projectSuffix; ///< what marks a file as that of a project: it stands anywhere in the path
    bool showsAll = false; ///< the project files of other projects too
    bool wantsADot = true; ///< names without an extension are left out
};

class ListingParser {
  public:
    /// Looks the tool's patterns up; with the debug trace on, each extraction does so instead.
    explicit ListingParser(ListingRules rules);

    /// The item that the record tells of, or null: it holds no file of the archive, or one that is not wanted.
    std::unique_ptr<CMArchiveItem> parse(std::string_view record);
    /// What the last extraction returned, whatever it was; 1 before the first one.
    [[nodiscard]] int result() const { return result_; }

  private:
    class Field {
      public:
        Field(const CString &key, bool traces);
        int extract(std::string_view record, std::string_view &value, int &wasSet);
        /// Only while nothing is traced.
        [[nodiscard]] bool isSameAs(const Field &other) const { return pattern_->isSameAs(*other.pattern_); }

      private:
        const CString &key_;
        bool traces_;
        std::optional<ToolPattern> pattern_; ///< while it is traced, none before the first extraction
    };

    std::string_view extractOrEmpty(Field &field, std::string_view record);
    [[nodiscard]] bool isOfAnotherProject(std::string_view workingFile) const;

    ListingRules rules_;
    bool traces_; ///< asked once for a listing: nothing can switch it meanwhile
    Field workingFile_;
    Field version_;
    Field mode_;
    Field locker_;
    bool modeTellsLocker_; ///< both have one pattern, as for tools whose files are writable where they are locked
    ItemTexts texts_;
    int result_ = 1;
};

/// Cuts what a tool has printed into records, and appends an item for each that tells of a wanted file; the items
/// are made by `new`. Returns what the last extraction returned; 1 if there was none, or if the tool has no
/// delimiter.
int parseListing(const CString &output, ListingRules rules, CMArchiveItemList &items);

} // namespace command
