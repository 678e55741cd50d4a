// Adds the question about a writable file to the steps of a command.
#pragma once

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/questions/WritableFileQuestion.h"

#include <optional>

namespace command {

template <class ITEM> class CheckOutRun : public CommandRun<ITEM> {
  public:
    using CommandRun<ITEM>::CommandRun;
    template <class LIST> void workAll(const LIST &items) {
        readQuestion();
        CommandRun<ITEM>::workAll(items);
    }

  protected:
    /// Reads whether to ask. Call it before the first item, and after the host's callback before reloads.
    void readQuestion() { question_.emplace(); }
    /// Throws if readQuestion() was not called, so that no file is overwritten by mistake.
    bool isWanted(ITEM &item) override {
        const bool mayOverwrite = question_.value().mayOverwrite(item);
        if (!mayOverwrite) {
            this->report().fail(CMOutcome::Kind::declined, resources::Text::outcomeDeclined);
        }
        return mayOverwrite;
    }

  private:
    std::optional<WritableFileQuestion> question_;
};

} // namespace command
