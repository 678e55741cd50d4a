// Lists the kinds of operations.
#pragma once

// The underlying type is fixed so that any number from outside is a valid value.
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
    CMTxnTool = 16, ///< any other invocation of the tool; makes no undo step, and all units are allowed
};
