// SCCTextOutProc: shows the user what a provider says and what the result of a call means.
#pragma once

class SCCTextOutProc {
  public:
    SCCTextOutProc() = delete;

    /// The levels of the second form of InternalTextOutProc.
    enum Level : unsigned long { information = 1, warning = 2, error = 3, success = 99 };

    /// The function that a provider may write its text to while it works: writes the text and a line end to the
    /// stream of the main outputer, if there is one. The kind of the text is ignored. Never asks the provider to
    /// cancel: always returns 0.
    static long IDETextOutProc(char const *text, unsigned long kind);

    /// Reports the result of a provider call: in a box if `toOutputWindow` is 0, else in the CM output window.
    /// Returns 1.
    static int InternalTextOutProc(long result, int toOutputWindow);
    /// Shows a text in a box. `level` is one of Level and selects the icon; for success the text is put into a
    /// sentence of its own. Any other number shows nothing. Returns 0.
    static int InternalTextOutProc(char const *text, unsigned long level);
};
