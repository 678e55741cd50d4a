// Records undo transactions (brackets) as they are opened and closed.
#pragma once

#include "CM/host/Undoer.h"
#include "orchard/OrchardApi.h"

#include <cstddef>
#include <vector>

namespace orchard {

class ORCHARD_API UndoRecorder final : public Undoer {
  public:
    [[nodiscard]] static UndoRecorder &instance();

    /// One bracket. Nested brackets belong to the step of the outermost one.
    struct Bracket {
        int flag = 0;           ///< as passed at the start
        int depth = 0;          ///< 0 for an outermost one
        bool doNothing = false; ///< creates no undo entry
        bool open = true;
        std::size_t changes = 0; ///< changes of elements inside this bracket and its nested ones
    };

    void startTransaction(AbstractPackedViewParams *viewParams, int flag, int, int) override;
    void start(int flag, bool doNothing);
    /// Closes the innermost open bracket of this kind; does nothing if there is none.
    void end(bool doNothing);
    void noteChange();

    /// The brackets in the order in which they were opened; the oldest are dropped once there are thousands.
    [[nodiscard]] const std::vector<Bracket> &brackets() const { return brackets_; }
    /// How many brackets are open.
    [[nodiscard]] int depth() const { return static_cast<int>(open_.size()); }
    /// The number of outermost steps that make an undo entry, since the last clear().
    [[nodiscard]] std::size_t steps() const { return steps_; }
    void clear();

  private:
    std::vector<Bracket> brackets_;
    std::vector<std::size_t> open_;
    std::size_t steps_ = 0;
};

} // namespace orchard
