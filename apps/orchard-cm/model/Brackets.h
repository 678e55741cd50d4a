// What a dialog of the host holds around an operation.
#pragma once

#include "CM/host/Undoer.h"

namespace orchard_cm {

/// One undoable step, open for as long as it lives.
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
