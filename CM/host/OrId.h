// Identifies a model element across renames, moves and reloads.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

class ORC_HOST_API OrId {
  public:
    OrId() = default;
    explicit OrId(CString text) : text_(std::move(text)) {}
    [[nodiscard]] CString getOrIdStr() const { return text_; }
    friend bool operator==(const OrId &, const OrId &) = default;

  private:
    CString text_;
};
