// Refers to a model object across reloads.
#pragma once

#include "CM/host/HostApi.h"

class IDObject;

class ORC_HOST_API IHandle {
  public:
    IHandle() = default;
    IHandle(const IHandle &) = delete;
    IHandle &operator=(const IHandle &) = delete;

    /// The object that currently has the handle's identifier; null if there is none. A reload may replace the
    /// object.
    [[nodiscard]] virtual IDObject *doGetObject() const = 0;
    /// The same, but also null for an object that is being destroyed.
    [[nodiscard]] virtual IDObject *doGetSafeObject() const = 0;
    /// Releases the handle, which must not be used afterwards.
    virtual void release() = 0;

  protected:
    virtual ~IHandle() = default;
};
