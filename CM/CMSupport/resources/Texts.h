// Lists every text that the library shows to a user, by number. The comment of a number names the arguments of
// the text in the order of its "%s".
#pragma once

namespace resources {

enum class Text : unsigned {
    noToolSelected = 1,          ///< no CM tool is selected
    providerNotFound,            ///< no provider is registered
    cannotEnterDirectory,        ///< directory, reason
    commandTimedOut,             ///< a command exceeded its limit and printed nothing
    commandReportedError,        ///< the tool's error pattern matched
    commandReportedWarning,      ///< the tool's warning pattern matched
    stubLeftOut,                 ///< kind, name
    referenceLeftOut,            ///< kind, name
    someUnitsLeftOut,            ///< the summary box
    controlledFileTitle,         ///< title of the one-time message
    controlledFileCheckOut,      ///< file, file
    controlledFileDontShow,      ///< its check box
    writableFileQuestion,        ///< file name, full file name
    loadingFailed,               ///< full file name
    unitOutsideWorkingDirectory, ///< file name, working directory, kind, name
    nameNotQuotable,             ///< path, reason
    archiveNotQuotable,          ///< path, reason
    namedCharacter,              ///< the character
    controlCharacter,
    backslashAtEnd,
    conditionalOfTemplates,
    conditionalOfSeveral, ///< the other name
    operationLock = 100,  ///< display names of the transaction types, in order
    operationFetch,
    operationUnlock,
    operationHistory,
    operationCheckIn,
    operationCheckOut,
    operationAdd,
    operationAddDirectory,
    operationMove,
    operationUndoCheckOut,
    operationProperties,
    operationListArchive,
    operationDelete,
    operationDeleteDirectory,
    operationRename,
    operationConnect,
    operationTool,
    questionTitle = 200, ///< the modified-unit question
    buttonYes,
    buttonYesToAll,
    buttonNo,
    buttonNoToAll,
    buttonCancel,
    questionNotAnswered,    ///< the question
    statusCheckedOut = 300, ///< the state of a unit on the provider route
    statusCheckedOutByOther,
    statusCheckedOutElsewhere,
    statusNotCheckedOut,
    statusControlled,
    statusNotControlled,
    statusDeleted,
    statusRefreshQuestion, ///< asked when a project was opened
    outcomeDeclined = 400, ///< why an item was not done; these texts may follow "failed: "
    outcomeGone,
    outcomeStub,
    outcomeReference,
    outcomeRefused,      ///< path, what it contains
    outcomeNoCommand,    ///< key of the template
    outcomeEmptyCommand, ///< key of the template
    outcomeUnresolved,   ///< key of the template, variable
    outcomeEndless,      ///< key of the template, key of the property that refers to itself
    outcomeNoDirectory,  ///< directory, why it was not checked out
    outcomeNoEntry,      ///< the provider's entry
    outcomeOutOfDate,
    runFailed, ///< exit status
    runCommandNotFound,
    runKilled, ///< signal's number, its name
    runTimedOut,
    runInterrupted,
    runWithheld,
    runNotInstalled,
    runNotStarted,         ///< the system's error
    callFailed,            ///< the provider's entry, its result
    providerFaulted = 500, ///< entry
    providerThrew,
    providerNotLoaded, ///< path, the system's reason, registry key
    providerNotOne,    ///< path, registry key
    providerNotConnected,
    providerConnectAgain,
    providerConnected,
    providerErrorOpening,   ///< the message of a result follows
    providerWarningOpening, ///< the message of a result may follow
    providerClosing,        ///< ends every message about a result
    providerSuccess,        ///< what has succeeded
    resultInitializeFailed, ///< the messages of results, in the order of the API's codes
    resultUnknownProject,
    resultProjectNotCreated,
    resultNotCheckedOut,
    resultAlreadyCheckedOut,
    resultFileLocked,
    resultOutExclusively,
    resultAccessFailure,
    resultCheckInConflict,
    resultFileExists,
    resultNotControlled,
    resultFileCheckedOut,
    resultNoVersion,
    resultNotSupported,
    resultNonspecificError,
    resultNotPerformed,
    resultTypeNotSupported,
    resultVerifyMerge,
    resultFixMerge,
    resultShellFailure,
    resultInvalidUser,
    resultProjectAlreadyOpen,
    resultProjectSyntax,
    resultInvalidPath,
    resultProjectNotOpen,
    resultNotAuthorized,
    resultFileSyntax,
    resultFileMissing,
    resultConnectionFailure,
    resultOptionsExist,
    resultCancelled,
    resultProjectCreated,
    resultNotAffected,
    fileCheckedOut = 600, ///< path; these texts are shown by operations of the provider route
    filesNotCheckedOut,   ///< file names
    nothingSelected,
    outOfDateLeftOut,
    fileNotControlled,    ///< path
    fileWillBeAdded,      ///< path
    fileNotCheckedOut,    ///< path
    fileInArchive,        ///< path
    providerHasCheckedIn, ///< what has succeeded, for providerSuccess
    providerHasAdded,
    providerHasRenamed,
};

/// Returns the text with this number; "?" for an unknown number.
const char *text(Text number);

} // namespace resources
