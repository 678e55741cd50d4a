// Journal: what happened while an operation ran, in order: tools that were started and ended, messages, questions.
#pragma once

#include "orchard/worker/RunWatch.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// One run of the tool, with what was said between it and the next one.
struct JournalRun {
    std::string command;
    orchard::ToolRun end; ///< end.end is notStarted as long as the tool runs
    std::vector<std::string> errors;
    std::string output;     ///< what it wrote; only if the journal keeps that
    std::string firstError; ///< the first line on its error channel
};

class Journal {
  public:
    /// Empties it for an operation. With `keepsOutput` what the tool writes is kept with each run.
    void begin(bool keepsOutput = false) {
        *this = {};
        keepsOutput_ = keepsOutput;
    }

    void runStarted(const std::string &command) { runs_.push_back({command, {}, {}, {}, {}}); }
    void runEnded(const orchard::ToolRun &run);
    void error(const std::string &text);
    void question(const std::string &text) { questions_.push_back(text); }

    [[nodiscard]] const std::vector<JournalRun> &runs() const { return runs_; }
    [[nodiscard]] const std::vector<std::string> &questions() const { return questions_; }
    /// Errors that were said before any tool ran.
    [[nodiscard]] const std::vector<std::string> &earlyErrors() const { return earlyErrors_; }

  private:
    std::vector<JournalRun> runs_;
    std::vector<std::string> questions_;
    std::vector<std::string> earlyErrors_;
    bool keepsOutput_ = false;
};

/// Why a run counts as failed, in words for the user; empty for a good run. The library itself goes by the text
/// that a tool prints; here its end counts as well.
std::string failureOf(const JournalRun &run);

} // namespace orchard_cm
