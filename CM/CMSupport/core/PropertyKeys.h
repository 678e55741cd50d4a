// Defines the keys of properties that the host's table of names (IPN) lacks. Keys of a tool are for
// CMProperty::getToolProperty, keys of the project for findGeneralProperty.
#pragma once

namespace keys {

// Command templates of a tool.
inline constexpr auto addControlledFile = "AddMember_ControlledFile";
inline constexpr auto addInDirectory = "AddMember_WithoutCheckOutCheckInDirectory";
inline constexpr auto deleteDirectory = "DeleteDirectory";
inline constexpr auto history = "History";
inline constexpr auto move = "Move";
inline constexpr auto moveDirectory = "MoveDirectory";
inline constexpr auto postConnect = "PostConnectToCMRepository";
inline constexpr auto rename = "Rename";
inline constexpr auto renameDirectory = "RenameDirectory";

// Patterns for the text that a tool prints.
inline constexpr auto errorPattern = "OperationErrorPattern";
inline constexpr auto repositoryPathPattern = "HeaderInfoItsRepositoryPath";
inline constexpr auto warningPattern = "OperationWarningPattern";

// Other values of a tool.
inline constexpr auto addOncePerDirectory = "CheckOutCheckInDirectoryOnceDuringAddToArchive";
inline constexpr auto archiveRoot = "ArchiveRoot";
inline constexpr auto askOnCheckout = "AskOnCheckoutReadWrite";
inline constexpr auto refreshStatus = "RefreshCMStatusAtProjectOpenup";
inline constexpr auto reportLoadingError = "ReportLoadingError";
inline constexpr auto repository = "Repository";
inline constexpr auto showAllFiles = "ShowAllFilesInArchive";
inline constexpr auto treeRepository = "SupportTreeRepository";

// Values of the project, for all tools.
inline constexpr auto addConfirm = "AddToArchiveConfirm";
inline constexpr auto allowOnReferences = "AllowCMOperationsOnReferenceUnits";
inline constexpr auto allowOnStubs = "AllowCMOperationsOnStubUnits";
inline constexpr auto clearWindow = "CMClearWindowBeforeOperation";
inline constexpr auto encloseComments = "EncloseCommentsInQuotes";
inline constexpr auto endSeparator = "CMOperationEndSeparator";
inline constexpr auto hybridMode = "UseHybridModeWhenPossible";
inline constexpr auto ignoreWithoutDot = "IgnoreArchiveItemsWithoutDot";
inline constexpr auto respectSynchronized = "EnableRespectSynchronizedCM";
inline constexpr auto startSeparator = "CMOperationStartSeparator";
inline constexpr auto useProvider = "UseSCCtool";

// Values of the project, for all providers.
inline constexpr auto auxProjPath = "AuxProjPath";
inline constexpr auto enableCancel = "EnableSCCCancel";
inline constexpr auto namelessProvider = "BaslatSCCName"; ///< the provider whose projects have its own name
inline constexpr auto projName = "ProjName";
inline constexpr auto providerMetaclass = "SCC";
inline constexpr auto queryOneByOne = "QuerySCCStatusOneByOne";
inline constexpr auto redirectOutput = "RedirectOutputToOrchard";

inline constexpr auto addNewAtCheckIn = "AddNewUnitsToArchiveDuringCheckin";
inline constexpr auto ignoreExistingAtAdd = "IgnoreAddToArchiveForExistingUnits";
inline constexpr auto ignoreUndoOfOthers = "IgnoreUndoCheckoutForNotCheckedoutUnits";
inline constexpr auto saveOnFetch = "SaveOnCheckOut";
inline constexpr auto unrollLoops = "UnrollLoops"; ///< all files in one call

} // namespace keys
