// The undo brackets as they were opened and closed.
#pragma once

#include "CM/host/Undoer.h"
#include "orchard/OrchardApi.h"

#include <cstddef>
#include <vector>

namespace orchard {

class ORCHARD_API UndoRecorder final : public Undoer {
  public:
    [[nodiscard]] static UndoRecorder &instance();

    /// One bracket. Brackets inside another belong to its step.
    struct Bracket {
        int flag = 0;           ///< as it was given at the start
        int depth = 0;          ///< 0 for an outermost one
        bool doNothing = false; ///< makes no undo entry
        bool open = true;
        std::size_t changes = 0; ///< of elements, inside this bracket and those in it
    };

    void startTransaction(AbstractPackedViewParams *viewParams, int flag, int, int) override;
    void start(int flag, bool doNothing);
    /// Closes the innermost bracket of the sort; one that nobody opened is passed over.
    void end(bool doNothing);
    void noteChange();

    /// Brackets in the order in which they were opened; old ones are forgotten when there are thousands.
    [[nodiscard]] const std::vector<Bracket> &brackets() const { return brackets_; }
    /// How many brackets are open.
    [[nodiscard]] int depth() const { return static_cast<int>(open_.size()); }
    /// Outermost steps that make an undo entry, since the last clear().
    [[nodiscard]] std::size_t steps() const { return steps_; }
    void clear();

  private:
    std::vector<Bracket> brackets_;
    std::vector<std::size_t> open_;
    std::size_t steps_ = 0;
};

} // namespace orchard
