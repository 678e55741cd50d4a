// Keeps an argument in a list for the time of a call.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

namespace core {

/// Keeps an argument at the end of the list while this object lives.
class PushedArgument {
  public:
    PushedArgument(CMArgumentList &args, CMArgument &argument) : args_(args) { args_.AddTail(&argument); }
    ~PushedArgument() { args_.RemoveTail(); }
    PushedArgument(const PushedArgument &) = delete;
    PushedArgument &operator=(const PushedArgument &) = delete;

  private:
    CMArgumentList &args_;
};

} // namespace core
