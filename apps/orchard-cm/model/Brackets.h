// Defines UndoBracket, which makes the changes of an operation one undoable step.
#pragma once

#include "CM/host/Undoer.h"

namespace orchard_cm {

/// Keeps an undoable step open as long as the object exists.
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
