// Provides what a dialog of the host does before and after an operation.
#pragma once

#include "CM/host/Undoer.h"

namespace orchard_cm {

/// Groups changes into one undoable step, which stays open as long as the object lives.
class UndoBracket {
  public:
    UndoBracket() {
        if (Undoer *const undoer = Undoer::instance()) {
            undoer->startTransaction(nullptr, 1, 0, 0);
            open_ = true;
        }
    }
    ~UndoBracket() {
        if (open_) {
            Undoer::endTransaction();
        }
    }
    UndoBracket(const UndoBracket &) = delete;
    UndoBracket &operator=(const UndoBracket &) = delete;

  private:
    bool open_ = false;
};

} // namespace orchard_cm
