// Groups changes into undoable steps. The brackets nest.
#pragma once

#include "CM/host/HostApi.h"

class AbstractPackedViewParams;

class ORC_HOST_API Undoer {
  public:
    virtual ~Undoer() = default;

    /// The undo manager, or null.
    [[nodiscard]] static Undoer *instance();
    virtual void startTransaction(AbstractPackedViewParams *viewParams, int flag, int = 0, int = 0) = 0;
    static void endTransaction();
    /// Start and end a group of steps for which no undo entry is made.
    static void startDoNothingTransaction();
    static void endDoNothingTransaction();
};

/// A guard around steps without an undo entry.
class ORC_HOST_API UnUndoableTransaction {
  public:
    explicit UnUndoableTransaction(int flag);
    ~UnUndoableTransaction();
    UnUndoableTransaction(const UnUndoableTransaction &) = delete;
    UnUndoableTransaction &operator=(const UnUndoableTransaction &) = delete;
};
