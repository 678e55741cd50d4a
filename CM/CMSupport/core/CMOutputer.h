// CMOutputer: the way to the host's CM output window.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"
#include "CM/platform/CWnd.h"

#include <ostream>

class ORC_CM_API CMOutputer {
  public:
    /// The stream of the output window, to be read or stored. Null without a window: nothing is written then.
    std::ostream *&operator()() { return stream_; }

    /// Makes the host's output window visible and writes the text on a line of its own. An empty text is ignored.
    static void writeToCMOutputWnd(const CString &text);
    /// Shows an error of reloading a unit as the tool property "ReportLoadingError" says: "Output Window",
    /// "Message Box" or "Both"; else not at all.
    static void reportLoadingErrror(const CString &text);
    /// The parent for a provider's dialogs: the host's main window, or what it has popped up; null without one.
    [[nodiscard]] static CWnd *getTopMostWindow();

  private:
    std::ostream *stream_ = nullptr;
};

/// The one outputer of the process.
ORC_CM_API CMOutputer &getMainCMOutputer();
