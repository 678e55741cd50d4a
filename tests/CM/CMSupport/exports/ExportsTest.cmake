# What leaves the shared library is the external interface and nothing else. Takes NM and LIBRARY.
execute_process(COMMAND ${NM} -DC --defined-only ${LIBRARY} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," table "${table}")
string(REPLACE "\n" ";" lines "${table}")

set(classes "(WritableFileQuestion|CM(Archive|ArchiveItem|ArchiveItemListWrapper|Argument|AskOnCheckoutGuard|Diagnostic")
string(APPEND classes "|Facade|Label|Log|Mode|Outputer|Property|PropertyArgument|PropertyDirectedArgument|ProviderFault")
string(APPEND classes "|Status|SuppressOKMessage|TargetFile|ToolInterface|ToolShellInterface|TraitFacade|Unit")
string(APPEND classes "|UserBasedArgument|Workspace))")
set(functions "(getMainCMOutputer|getOverlayImage|theCMToolShellInterface|shouldSetInformationFilesCheckBox")
string(APPEND functions "(ForUnitsList2?)?|findVariable|hasOwnDirectory|toolMetaclass")
string(APPEND functions "|command::fillIn(Move|Rename|RenameDirectory))")
set(allowed "^(${classes}::[~A-Za-z_]+[^ ]*|(vtable|typeinfo|typeinfo name) for ${classes}$|${functions}\\(")
string(APPEND allowed "|theCMFacade$)")

set(foreign)
set(seen "")
foreach(line ${lines})
  string(REGEX REPLACE "^[0-9a-f ]* [A-Za-z] " "" name "${line}")
  if(NOT name MATCHES "${allowed}")
    list(APPEND foreign "${name}")
  endif()
  string(APPEND seen "${name}\n")
endforeach()
if(foreign)
  list(JOIN foreign "\n  " text)
  message(FATAL_ERROR "exported, but not part of the interface:\n  ${text}")
endif()

foreach(wanted "CMFacade::CheckOut(" "CMFacade::RecCheckOut(" "CMFacade::CheckOutFromArchive("
               "CMFacade::RecCheckOutFromArchive(" "CMFacade::FetchForDiffFromArc(" "CMFacade::HistoryArcView("
               "CMFacade::Properties(" "CMFacade::doConnectToArcDlg()" "CMFacade::RunToolExe()" "CMFacade::doSetUpSCC()"
               "CMFacade::doCloseProjectSCC()" "CMFacade::doCleanUpSCC()" "CMFacade::DoCmDialog()" "CMFacade::outStream()"
               "CMFacade::removeDuplicatesFromItemList(" "CMProperty::CheckCustomButton()" "CMProperty::getIsLoaded()" "getMainCMOutputer()"
               "CMStatus::getControlled(" "CMTraitFacade::getLocker(" "theCMFacade"
               "theCMToolShellInterface()" "getOverlayImage(" "shouldSetInformationFilesCheckBox("
               "shouldSetInformationFilesCheckBoxForUnitsList(" "shouldSetInformationFilesCheckBoxForUnitsList2(")
  string(FIND "${seen}" "${wanted}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "not exported: ${wanted}")
  endif()
endforeach()
