// Describes one file of the archive as a list operation reported it, and derives names from its path.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>

class ItemTexts;

class ORC_CM_API CMArchiveItem {
  public:
    /// The mode that a list operation read. The numbers differ from those of CMMode::Mode.
    enum Mode { unknown = 0, readOnly = 1, readWrite = 2 };

    /// What a listing says about a file. The texts are parts of the listing.
    struct Listed {
        std::string_view fileNameWithPath;
        std::string_view version;
        Mode mode = unknown;
        std::string_view locker;
    };

    CMArchiveItem(const CString &fileNameWithPath, const CString &version, const Mode &mode, const CString &locker,
                  const CString &status);
    /// Makes an item with an empty status. The item's text is stored in `texts`.
    CMArchiveItem(const Listed &listed, ItemTexts &texts);

    [[nodiscard]] CString getFileNameWithPath() const { return path(); }
    [[nodiscard]] CString getVersion() const { return text().substr(path_, version_); }
    [[nodiscard]] Mode getMode() const { return mode_; }
    [[nodiscard]] CString getLocker() const { return text().substr(path_ + version_, locker_); }
    [[nodiscard]] CString getStatus() const { return text().substr(path_ + version_ + locker_, status_); }
    void setStatus(const CString &status);

    /// Returns the text from the last dot of the full name to its end; a dot in a directory name counts.
    [[nodiscard]] CString getSuffix() const;
    /// Returns the text after the last separator of either kind.
    [[nodiscard]] CString getFileName() const;
    /// Cuts the full name at its last dot and returns the text after the last separator of the rest.
    [[nodiscard]] CString getName() const;
    /// Returns the display name of the unit type.
    [[nodiscard]] CString getType() const;
    /// Returns the path relative to the root of the archive or the workspace.
    [[nodiscard]] CString getNameNShortPath(bool withExtension) const;
    /// Returns the directory in the workspace to which the item belongs; empty without an active project.
    [[nodiscard]] CString getLocalPath() const;
    /// Returns the full name of the unit's file in the workspace.
    [[nodiscard]] CString getFullUnitFileName() const;
    /// Returns the name by which the host knows the unit's file.
    [[nodiscard]] CString getFileNameForRepFiles() const;

  private:
    void keep(std::initializer_list<std::string_view> parts);
    [[nodiscard]] std::string_view text() const {
        return {text_.get(), std::size_t{path_} + version_ + locker_ + status_};
    }
    [[nodiscard]] std::string_view path() const { return text().substr(0, path_); }

    // One text and the lengths of its parts: there may be millions of items.
    std::shared_ptr<const char> text_; ///< full name, version, locker, status
    std::uint32_t path_;
    std::uint32_t version_;
    std::uint32_t locker_;
    std::uint32_t status_ = 0;
    Mode mode_;
};

/// Items of the archive. The list does not own them.
class CMArchiveItemList : public CList<CMArchiveItem *, CMArchiveItem *&> {
  public:
    using CList::CList;
};

/// A list that owns its items.
class ORC_CM_API CMArchiveItemListWrapper {
  public:
    CMArchiveItemListWrapper() = default;
    CMArchiveItemListWrapper(const CMArchiveItemListWrapper &) = delete;
    CMArchiveItemListWrapper &operator=(const CMArchiveItemListWrapper &) = delete;
    virtual ~CMArchiveItemListWrapper();

    [[nodiscard]] CMArchiveItemList &list() { return items_; }
    /// Takes ownership.
    void addTail(CMArchiveItem *item);
    /// Removes the item from the list if it is there, and deletes it in either case. Null is ignored.
    void removeAndMemoryDelete(CMArchiveItem *item);

  private:
    CMArchiveItemList items_;
};
