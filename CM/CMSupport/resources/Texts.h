// Every text that the library shows to a user, by number. "%s" takes the arguments in the order that the comment
// of the number names.
#pragma once

namespace resources {

enum class Text : unsigned {
    noToolSelected = 1,          ///< no CM tool is selected
    providerNotFound,            ///< no provider is registered
    providerRouteMissing,        ///< the provider route is not part of this version
    cannotEnterDirectory,        ///< directory, reason
    commandTimedOut,             ///< a command ran into its limit and printed nothing
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
    nameNotQuotable,             ///< path, what it holds
    archiveNotQuotable,          ///< path, what it holds
    namedCharacter,              ///< the character
    controlCharacter,
    backslashAtEnd,
    conditionalOfTemplates,
    operationLock = 100, ///< display names of the transaction types, in their order
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
};

/// The text with this number; "?" for a number that the table doesn't hold.
const char *text(Text number);

} // namespace resources
