// Writes the host's log.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

class LogTrace {
  public:
    /// An open channel of the log, which the destructor closes.
    class ORC_HOST_API Log {
      public:
        enum LogNames { cm = 4 };
        explicit Log(int name);
        ~Log(); // NOLINT(performance-trivially-destructible): the host writes it
        Log(const Log &) = delete;
        Log &operator=(const Log &) = delete;
        /// Writes a line with its source file and line number.
        void Min(const char *sourcePath, int line, const CString &text);

      private:
        int name_;
    };
};
