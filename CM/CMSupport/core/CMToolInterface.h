// Runs a command line of a CM tool.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"

class ORC_CM_API CMToolInterface {
  public:
    CMToolInterface() = default;
    CMToolInterface(const CMToolInterface &) = delete;
    CMToolInterface &operator=(const CMToolInterface &) = delete;

    /// Runs one command and returns what it printed in `output` and `error`. The implementation defines the return
    /// value.
    virtual int Execute(const CString &command, CString &output, CString &error, CString directory) = 0;

  protected:
    ~CMToolInterface() = default;
};
