// CheckOutRun: adds to the steps of every command the question about a writable file.
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
    /// To be called before the first item: its place among the visible steps is after the host's callback.
    void readQuestion() { question_.emplace(); }
    /// Throws if the question was not read: no file is overwritten unasked by mistake.
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
