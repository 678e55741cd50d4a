// Implements handles, which look an identifier up in the host's table of objects.
#pragma once

#include "CM/host/IHandle.h"
#include "CM/platform/CString.h"

namespace recording {

class Handle final : public IHandle {
  public:
    explicit Handle(CString id);
    [[nodiscard]] IDObject *doGetObject() const override;
    [[nodiscard]] IDObject *doGetSafeObject() const override;
    void release() override;

  private:
    ~Handle() override = default;
    CString id_;
};

} // namespace recording
