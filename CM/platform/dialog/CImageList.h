// Lists images by index, each with a name. The driver provides the pictures.
#pragma once

#include "CM/platform/CString.h"

#include <vector>

class CImageList {
  public:
    /// Appends an image and returns its index.
    int Add(CString name) {
        names_.push_back(std::move(name));
        return GetImageCount() - 1;
    }
    [[nodiscard]] int GetImageCount() const { return static_cast<int>(names_.size()); }
    /// Returns the name of an image; empty for an index out of range.
    [[nodiscard]] CString name(int index) const {
        return index >= 0 && index < GetImageCount() ? names_[static_cast<std::size_t>(index)] : CString();
    }
    void RemoveAll() { names_.clear(); }

  private:
    std::vector<CString> names_;
};
