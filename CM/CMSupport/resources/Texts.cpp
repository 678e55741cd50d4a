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
    case Text::providerRouteMissing:
        return "This version works with command line tools only, but the project is set to use a Source Code "
               "Control provider. Set its property \"UseSCCtool\" to \"No\" and choose a command line tool.";
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
        return "The file \"%s\" is writable, so it may hold changes that are not in the archive. Checking it out "
               "may overwrite them.\nFile: %s\nCheck it out?";
    case Text::loadingFailed:
        return "The file \"%s\" could not be loaded into the model. Check that it is a complete unit file, then "
               "load it again.";
    case Text::unitOutsideWorkingDirectory:
        return "The file \"%s\" can't be added to the archive, because it is not in the directory \"%s\", where "
               "the tool works. Move the %s \"%s\" there, then add it again.";
    case Text::nameNotQuotable:
        return "No command was run for \"%s\": the name holds %s, which no command can quote. Rename the file, "
               "then try again.";
    case Text::archiveNotQuotable:
        return "The archive \"%s\" was not accepted: its path holds %s, which no command can quote. Move the "
               "archive, then connect again.";
    case Text::namedCharacter:
        return "the character %s";
    case Text::controlCharacter:
        return "a control character";
    case Text::backslashAtEnd:
        return "a backslash at the end of the name or of a directory";
    case Text::conditionalOfTemplates:
        return "a \"(\", a \"?\" and a \")\" in this order, which a command template takes for a condition";
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
        return "the reload of an earlier unit replaced it before its turn, or took it out of the model; do it "
               "again for this one";
    case Text::outcomeStub:
        return "the unit is not loaded, and was left out";
    case Text::outcomeReference:
        return "the unit is a reference, and was left out";
    case Text::outcomeRefused:
        return "the path %s can't be given to a tool: it holds %s";
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
        return "the tool, or a program that its command names, is not installed, or not on the PATH (exit status "
               "127)";
    case Text::runKilled:
        return "the tool died of signal %s (%s)";
    case Text::runTimedOut:
        return "the tool did not end within its time limit (property CMChildThreadTimeOut), and was ended";
    case Text::runInterrupted:
        return "the tool was ended by the interruption";
    case Text::runWithheld:
        return "interrupted before its turn";
    case Text::runNotInstalled:
        return "the tool is not installed, or not on the PATH";
    case Text::runNotStarted:
        return "the tool could not be started: %s";
    case Text::callFailed:
        return "the provider's call %s failed with result %s";
    }
    return "?"; // a number from outside the enumeration
}

} // namespace resources
