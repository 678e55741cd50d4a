// What the check-out operations share beyond the steps of every command.
#pragma once

#include "CM/CMSupport/command/BatchSteps.h"
#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"

#include <optional>

namespace command {

/// Whether the tool's property IPN::CMSaveOnCheckOut asks for the model to be saved before a batch.
[[nodiscard]] bool isSaveWanted();

/// The question about a file that is writable and so may hold changes of its own.
class WritableFileQuestion {
  public:
    /// Reads the tool property "AskOnCheckoutReadWrite". Anything but "No" asks, a missing property included.
    WritableFileQuestion();
    /// True if the unit's file may be overwritten: nothing to ask, or the answer was yes.
    [[nodiscard]] bool mayOverwrite(const IUnit &unit) const;
    /// The same for the unit that the item belongs to; an item without one raises no question.
    [[nodiscard]] bool mayOverwrite(const CMArchiveItem &item) const;

  private:
    bool asks_;
};

/// The run of a check-out operation.
template <class ITEM> class CheckOutRun : public CommandRun<ITEM> {
  public:
    using CommandRun<ITEM>::CommandRun;
    /// To be called before the first item.
    void readQuestion() { question_.emplace(); }

  protected:
    /// Throws if the question was not read: no file is overwritten unasked by mistake.
    bool isWanted(ITEM &item) override { return question_.value().mayOverwrite(item); }

  private:
    std::optional<WritableFileQuestion> question_;
};

} // namespace command
