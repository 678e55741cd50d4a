// Writes to the host's CM output window.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"
#include "CM/platform/CWnd.h"

#include <ostream>

class ORC_CM_API CMOutputer {
  public:
    /// Returns a reference to the stream of the output window, which the host may replace. Without a window it is
    /// null, and nothing is written.
    std::ostream *&operator()() { return stream_; }

    /// Makes the host's output window visible and writes the text on a line of its own. An empty text is ignored.
    static void writeToCMOutputWnd(const CString &text);
    /// Shows an error in reloading a unit in the place that the tool property "ReportLoadingError" names: "Output
    /// Window", "Message Box" or "Both". With any other value, shows nothing.
    static void reportLoadingErrror(const CString &text);
    /// Returns the parent for a provider's dialogs: the host's main window or its last active pop-up window; null
    /// without one.
    [[nodiscard]] static CWnd *getTopMostWindow();

  private:
    std::ostream *stream_ = nullptr;
};

/// Returns the only outputer of the process.
ORC_CM_API CMOutputer &getMainCMOutputer();
