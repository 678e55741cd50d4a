// FileNameList: a list of file names, each of them once, in the order in which they arrived.
#pragma once

#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

#include <string_view>
#include <unordered_set>

class FileNameList {
  public:
    FileNameList() = default;
    FileNameList(const FileNameList &) = delete; // the index refers to the texts of this list
    FileNameList &operator=(const FileNameList &) = delete;

    [[nodiscard]] const CStringList &names() const { return names_; }
    [[nodiscard]] int GetCount() const { return names_.GetCount(); }
    [[nodiscard]] bool IsEmpty() const { return names_.IsEmpty(); }
    /// Returns whether the list contains exactly this name; looks it up by hash.
    [[nodiscard]] bool contains(std::string_view name) const { return index_.contains(name); }
    /// Appends the name; does nothing if the list contains it already.
    void AddTail(const CString &name) {
        if (!contains(name)) {
            index_.insert(names_.GetAt(names_.AddTail(name)).view());
        }
    }
    void RemoveAll() {
        index_.clear();
        names_.RemoveAll();
    }

  private:
    CStringList names_;
    std::unordered_set<std::string_view> index_; ///< views of the texts in names_, which never move
};
