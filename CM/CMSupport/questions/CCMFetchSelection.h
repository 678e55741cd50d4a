// CCMFetchSelection: what a recursive fetch does to a file that is checked out.
#pragma once

class CCMFetchSelection {
  public:
    /// 0: fetches the file. 1: undoes the check out and checks the file out again. Any other value: undoes the
    /// check out and fetches the file; the first file resets the flag to 0. Set by the dialog that asks.
    static inline int fetchOptionFlag = 0;
};
