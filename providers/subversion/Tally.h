// Tally: what became of the files of one call.
#pragma once

#include "CM/scc/scc.h"
#include "providers/subversion/Output.h"

#include <string>

namespace svnscc {

/// Shows each failure at once and remembers the last, which is the result of a call with several files.
class Tally {
  public:
    explicit Tally(Output &output) : output_(output) {}

    void failed(SCCRTN result, const std::string &path, const std::string &reason) {
        output_.error(path + ": " + reason);
        result_ = result;
    }
    [[nodiscard]] SCCRTN result() const { return result_; }

  private:
    Output &output_;
    SCCRTN result_ = SCC_OK;
};

} // namespace svnscc
