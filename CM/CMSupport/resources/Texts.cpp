#include "CM/CMSupport/resources/Texts.h"

namespace resources {

// A switch without a default, so that the compiler reports a number without a text.
const char *text(Text number) {
    switch (number) {
    case Text::noToolSelected:
        return "No configuration management tool is selected. Choose one in the project's configuration "
               "management properties, then try again.";
    case Text::providerNotFound:
        return "No Source Code Control provider is registered on this computer. Install one, or choose a command "
               "line tool in the project's configuration management properties.";
    case Text::cannotEnterDirectory:
        return "Cannot enter the directory \"%s\": %s. Check that the directory exists and that you may enter "
               "it.\n";
    case Text::commandTimedOut:
        return "The configuration management command exceeded its time limit and printed nothing. If it needs "
               "more time, increase the tool's property \"CMChildThreadTimeOut\" (milliseconds).\n";
    case Text::commandReportedError:
        return "The configuration management command reported an error. The configuration management output "
               "shows what it printed.";
    case Text::commandReportedWarning:
        return "The configuration management command reported a warning. The configuration management output "
               "shows what it printed.";
    case Text::stubLeftOut:
        return "%s '%s' is left out: it is not loaded. Load it first, or allow configuration management of units "
               "that are not loaded.";
    case Text::referenceLeftOut:
        return "%s '%s' is left out: it is used here by reference. Work on it in the project that it belongs to.";
    case Text::someUnitsLeftOut:
        return "Some of the selected units are left out, because they are not loaded or are used by reference. "
               "The configuration management output lists them.";
    case Text::controlledFileTitle:
        return "Checking out a controlled file";
    case Text::controlledFileCheckOut:
        return "\"%s\" is a controlled file, not part of the model: checking it out does not reload the "
               "model. If \"%s\" is open in another program, close it there and open it again afterwards.";
    case Text::controlledFileDontShow:
        return "Do not show this message again";
    case Text::writableFileQuestion:
        return "The file \"%s\" is writable, so it may contain changes that are not in the archive. Checking it "
               "out may overwrite them.\nFile: %s\nCheck it out?";
    case Text::loadingFailed:
        return "The file \"%s\" could not be loaded into the model. Check that it is a complete unit file, then "
               "load it again.";
    case Text::unitOutsideWorkingDirectory:
        return "The file \"%s\" can't be added to the archive, because it is not in the directory \"%s\", where "
               "the tool works. Move the %s \"%s\" there, then add it again.";
    case Text::nameNotQuotable:
        return "No command was run for \"%s\": the name contains %s, which no command can quote. Rename the file, "
               "then try again.";
    case Text::archiveNotQuotable:
        return "The archive \"%s\" was not accepted: its path contains %s, which no command can quote. Move the "
               "archive, then connect again.";
    case Text::namedCharacter:
        return "the character %s";
    case Text::controlCharacter:
        return "a control character";
    case Text::backslashAtEnd:
        return "a backslash at the end of the name or of a directory";
    case Text::conditionalOfTemplates:
        return "a \"(\", a \"?\" and a \")\", which a command template could take for a condition";
    case Text::conditionalOfSeveral:
        return "together with %s, a \"(\", a \"?\" and a \")\", which a command template could take for a "
               "condition";
    case Text::operationLock:
        return "Lock";
    case Text::operationFetch:
        return "Fetch from Archive";
    case Text::operationUnlock:
        return "Unlock";
    case Text::operationHistory:
        return "History";
    case Text::operationCheckIn:
        return "Check In";
    case Text::operationCheckOut:
        return "Check Out";
    case Text::operationAdd:
        return "Add to Archive";
    case Text::operationAddDirectory:
        return "Add Directory";
    case Text::operationMove:
        return "Move";
    case Text::operationUndoCheckOut:
        return "Undo Check Out";
    case Text::operationProperties:
        return "Properties";
    case Text::operationListArchive:
        return "List Archive";
    case Text::operationDelete:
        return "Delete";
    case Text::operationDeleteDirectory:
        return "Delete Directory";
    case Text::operationRename:
        return "Rename";
    case Text::operationConnect:
        return "Connect to Archive";
    case Text::operationTool:
        return "Configuration Management Tool";
    case Text::questionTitle:
        return "Configuration Management";
    case Text::buttonYes:
        return "Yes";
    case Text::buttonYesToAll:
        return "Yes to all";
    case Text::buttonNo:
        return "No";
    case Text::buttonNoToAll:
        return "No to all";
    case Text::buttonCancel:
        return "Cancel";
    case Text::questionNotAnswered:
        return "Nobody could be asked, so the answer is No:\n%s";
    case Text::statusCheckedOut:
        return "Checked out";
    case Text::statusCheckedOutByOther:
        return "Checked out by another user";
    case Text::statusCheckedOutElsewhere:
        return "Checked out by you elsewhere";
    case Text::statusNotCheckedOut:
        return "Not checked out";
    case Text::statusControlled:
        return "Controlled";
    case Text::statusNotControlled:
        return "Not controlled";
    case Text::statusDeleted:
        return "Deleted";
    case Text::statusRefreshQuestion:
        return "Refresh the configuration management status of all units now? With many units this may take a "
               "while.";
    case Text::outcomeDeclined:
        return "the file is writable, and the answer was No";
    case Text::outcomeGone:
        return "the reload of an earlier unit replaced this one or removed it from the model; repeat the command "
               "for it";
    case Text::outcomeStub:
        return "the unit is not loaded, and was left out";
    case Text::outcomeReference:
        return "the unit is a reference, and was left out";
    case Text::outcomeRefused:
        return "the path %s can't be given to a tool: it contains %s";
    case Text::outcomeNoCommand:
        return "the CM tool has no command for it (property %s)";
    case Text::outcomeEmptyCommand:
        return "the CM tool has no command for it (property %s is empty)";
    case Text::outcomeUnresolved:
        return "the command (property %s) can't be expanded: '%s' could not be resolved";
    case Text::outcomeEndless:
        return "the command (property %s) can't be expanded: '%s' refers to itself or is nested too deeply";
    case Text::outcomeNoDirectory:
        return "its directory %s was not checked out: %s";
    case Text::runFailed:
        return "the tool failed with exit status %s";
    case Text::runCommandNotFound:
        return "the tool, or a program that its command uses, is not installed or not on the PATH (exit status "
               "127)";
    case Text::runKilled:
        return "the tool was killed by signal %s (%s)";
    case Text::runTimedOut:
        return "the tool exceeded its time limit (property CMChildThreadTimeOut) and was ended";
    case Text::runInterrupted:
        return "the tool was ended because of an interruption";
    case Text::runWithheld:
        return "interrupted before its turn";
    case Text::runNotInstalled:
        return "the tool is not installed or not on the PATH";
    case Text::runNotStarted:
        return "the tool could not be started: %s";
    case Text::outcomeNoEntry:
        return "the provider doesn't offer %s";
    case Text::outcomeOutOfDate:
        return "the archive has a newer version; fetch it first";
    case Text::callFailed:
        return "the provider's call %s failed with result %s";
    case Text::providerFaulted:
        return "The Source Code Control provider crashed in its entry %s. Save your work and start the program "
               "again before you use the provider again.";
    case Text::providerThrew:
        return "The Source Code Control provider ended the operation with an exception.";
    case Text::providerNotLoaded:
        return "The library of the Source Code Control provider, %s, can't be loaded: %s. Install the provider "
               "again, or correct SccServerPath in the registry's key %s.";
    case Text::providerNotOne:
        return "The library %s is not a Source Code Control provider: it does not export SccInitialize. Correct "
               "SccServerPath in the registry's key %s.";
    case Text::providerNotConnected:
        return "The unit is not connected to an archive. Connect the project, or the unit, to an archive first.";
    case Text::providerConnectAgain:
        return "The unit is connected to an archive already. Give up this connection and connect to another "
               "archive?";
    case Text::providerConnected:
        return "The project is connected to the archive.";
    case Text::providerErrorOpening:
        return "The Source Code Control provider reported an error: ";
    case Text::providerWarningOpening:
        return "The Source Code Control provider reported: ";
    case Text::providerClosing:
        return " The configuration management output may show more.";
    case Text::providerSuccess:
        return "The Source Code Control provider has finished: %s";
    case Text::resultInitializeFailed:
        return "The provider could not be started. Check its installation.";
    case Text::resultUnknownProject:
        return "The provider doesn't know the project. Connect the model to an archive again.";
    case Text::resultProjectNotCreated:
        return "The provider could not create the project or the new name. Check that you may do so.";
    case Text::resultNotCheckedOut:
        return "The file is not checked out. Check it out first.";
    case Text::resultAlreadyCheckedOut:
        return "The file is checked out already.";
    case Text::resultFileLocked:
        return "The file is locked by another user. Wait until the lock is released, or ask its holder.";
    case Text::resultOutExclusively:
        return "Another user has checked the file out exclusively. Wait until it is checked in.";
    case Text::resultAccessFailure:
        return "The archive could not be reached. Check the network and your rights, then try again.";
    case Text::resultCheckInConflict:
        return "The file conflicts with the version in the archive. Fetch that version, merge the two, then check "
               "in again.";
    case Text::resultFileExists:
        return "The archive has a file of this name already.";
    case Text::resultNotControlled:
        return "The file is not under the provider's control. Add it to the archive first.";
    case Text::resultFileCheckedOut:
        return "The file is checked out. Check it in or undo the check out first.";
    case Text::resultNoVersion:
        return "The archive has no such version.";
    case Text::resultNotSupported:
        return "The provider doesn't support the operation.";
    case Text::resultNonspecificError:
        return "The Source Code Control provider reported an error without a reason.";
    case Text::resultNotPerformed:
        return "The provider did not perform the operation.";
    case Text::resultTypeNotSupported:
        return "The archive can't store a file of this type.";
    case Text::resultVerifyMerge:
        return "The file was merged with the version in the archive. Check the result, then check in again.";
    case Text::resultFixMerge:
        return "The file could not be merged with the version in the archive. Resolve the conflicts, then check "
               "in again.";
    case Text::resultShellFailure:
        return "The provider could not start a program that it needs.";
    case Text::resultInvalidUser:
        return "The provider doesn't accept the user name or the password.";
    case Text::resultProjectAlreadyOpen:
        return "The provider has a project open already.";
    case Text::resultProjectSyntax:
        return "The provider doesn't understand the name of the project. Connect the model to an archive again.";
    case Text::resultInvalidPath:
        return "The provider doesn't accept the path.";
    case Text::resultProjectNotOpen:
        return "The provider has no open project. Connect the model to an archive first.";
    case Text::resultNotAuthorized:
        return "You are not allowed to do this. Ask the administrator of the archive.";
    case Text::resultFileSyntax:
        return "The provider doesn't understand the name of the file.";
    case Text::resultFileMissing:
        return "The file doesn't exist on the disk. Fetch it from the archive first.";
    case Text::resultConnectionFailure:
        return "The provider could not connect to the archive. Check the network, then try again.";
    case Text::resultOptionsExist:
        return "The provider has further options for the operation.";
    case Text::resultCancelled:
        return "The operation was cancelled.";
    case Text::resultProjectCreated:
        return "The provider has created the project.";
    case Text::resultNotAffected:
        return "The file was not affected.";
    case Text::fileCheckedOut:
        return "The file is checked out already: %s";
    case Text::filesNotCheckedOut:
        return "These files were not checked out: %s";
    case Text::nothingSelected:
        return "Nothing is selected.";
    case Text::outOfDateLeftOut:
        return "Files of which the archive has a newer version were left out. Fetch them first.";
    case Text::fileNotControlled:
        return "The file is not under the provider's control; add it to the archive first: %s";
    case Text::fileWillBeAdded:
        return "The file is not under the provider's control and will be added to the archive: %s";
    case Text::fileNotCheckedOut:
        return "The file is not checked out: %s";
    case Text::fileInArchive:
        return "The file is in the archive already: %s";
    case Text::providerHasCheckedIn:
        return "the check in.";
    case Text::providerHasAdded:
        return "adding to the archive.";
    case Text::providerHasRenamed:
        return "the renaming.";
    }
    return "?"; // a number from outside the enumeration
}

} // namespace resources
