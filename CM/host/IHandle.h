// IHandle: a reference to a model object that survives reloads.
#pragma once

#include "CM/host/HostApi.h"

class IDObject;

class ORC_HOST_API IHandle {
  public:
    IHandle() = default;
    IHandle(const IHandle &) = delete;
    IHandle &operator=(const IHandle &) = delete;

    /// The object with the identifier that the handle was made for; after a reload this may be another object
    /// than before. Null if it is gone.
    [[nodiscard]] virtual IDObject *doGetObject() const = 0;
    /// The same, and null also for an object that is being taken down.
    [[nodiscard]] virtual IDObject *doGetSafeObject() const = 0;
    /// Gives the handle back; it must not be used afterwards.
    virtual void release() = 0;

  protected:
    virtual ~IHandle() = default;
};
