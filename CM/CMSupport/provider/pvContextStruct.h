// Describes one open context of the provider.
#pragma once

#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class pvContextStruct {
  public:
    [[nodiscard]] void *getpvContextPtr() const { return context_; }
    /// The address of the context field, for the call that fills it in.
    [[nodiscard]] void **getpvContextPtrPtr() { return &context_; }
    /// The provider's project name, empty until connected.
    [[nodiscard]] CString getpvContextName() const { return name_; }
    void setpvContextName(CString name) { name_ = std::move(name); }

  private:
    void *context_ = nullptr;
    CString name_;
};

/// All open contexts in the order of their creation.
using pvContextStructList = CList<pvContextStruct *, pvContextStruct *>;
