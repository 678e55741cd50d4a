// CMTranscationType: what an operation is about.
#pragma once

// The type below it is fixed so that a number from outside has a value as well.
enum CMTranscationType : int {
    CMTxnLock = 0,
    CMTxnFetch = 1,
    CMTxnUnlock = 2,
    CMTxnHistory = 3,
    CMTxnCheckIn = 4,
    CMTxnCheckOut = 5,
    CMTxnAdd = 6,
    CMTxnAddDirectory = 7,
    CMTxnMove = 8,
    CMTxnUndoCheckOut = 9,
    CMTxnProperties = 10,
    CMTxnListArchive = 11,
    CMTxnDelete = 12,
    CMTxnDeleteDirectory = 13,
    CMTxnRename = 14,
    CMTxnConnect = 15,
    CMTxnTool = 16, ///< a free invocation of the tool: makes no undo step, and no unit is barred from it
};
