# Installs what a program needs to embed the library: the shared library, the parts of CM/platform that the headers
# use, the headers of the host's interface, of the exports and of the SCC API, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(orc_cm_headers
  CM/CMSupport/command/PathPlaceholders.h
  CM/CMSupport/core/CMApi.h
  CM/CMSupport/core/CMArchive.h
  CM/CMSupport/core/CMArchiveItem.h
  CM/CMSupport/core/CMArgument.h
  CM/CMSupport/core/CMDiagnostic.h
  CM/CMSupport/core/CMFacade.h
  CM/CMSupport/core/CMLabel.h
  CM/CMSupport/core/CMLog.h
  CM/CMSupport/core/CMMode.h
  CM/CMSupport/core/CMOperation.h
  CM/CMSupport/core/CMOutcome.h
  CM/CMSupport/core/CMOutputer.h
  CM/CMSupport/core/CMProperty.h
  CM/CMSupport/core/CMStatus.h
  CM/CMSupport/core/CMSuppressOKMessage.h
  CM/CMSupport/core/CMTargetFile.h
  CM/CMSupport/core/CMToolInterface.h
  CM/CMSupport/core/CMToolShellInterface.h
  CM/CMSupport/core/CMTraitFacade.h
  CM/CMSupport/core/CMTranscationType.h
  CM/CMSupport/core/CMUnit.h
  CM/CMSupport/core/CMWorkspace.h
  CM/CMSupport/core/PropertyKeys.h
  CM/CMSupport/core/UnitFiles.h
  CM/CMSupport/core/Variable.h
  CM/CMSupport/provider/CMProviderFault.h
  CM/CMSupport/provider/pvContextStruct.h
  CM/CMSupport/questions/CMAskOnCheckoutGuard.h)

set(orc_cm_include ${CMAKE_INSTALL_INCLUDEDIR}/orc_cm)
set(orc_cm_package ${CMAKE_INSTALL_LIBDIR}/cmake/orc_cm)

install(TARGETS orc_cm_dll orc_host orc_platform orc_platform_dialog orc_scc
  EXPORT orc_cmTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT orc_cm NAMELINK_COMPONENT orc_cm
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT orc_cm
  INCLUDES DESTINATION ${orc_cm_include})
install(EXPORT orc_cmTargets NAMESPACE orc_cm:: DESTINATION ${orc_cm_package} COMPONENT orc_cm)

foreach(header ${orc_cm_headers})
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${orc_cm_include}/${folder} COMPONENT orc_cm)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/CM/platform ${PROJECT_SOURCE_DIR}/CM/scc ${PROJECT_SOURCE_DIR}/CM/host
  DESTINATION ${orc_cm_include}/CM
  COMPONENT orc_cm
  FILES_MATCHING PATTERN *.h
  PATTERN posix EXCLUDE)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/orc_cmConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/orc_cmConfig.cmake INSTALL_DESTINATION ${orc_cm_package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/orc_cmConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/package/orc_cmConfig.cmake
  ${PROJECT_BINARY_DIR}/package/orc_cmConfigVersion.cmake
  DESTINATION ${orc_cm_package} COMPONENT orc_cm)

# The pkg-config file finds the prefix relative to itself, so that an installation can be moved.
file(RELATIVE_PATH orc_cm_prefix /p/${CMAKE_INSTALL_LIBDIR}/pkgconfig /p)
configure_file(${CMAKE_CURRENT_LIST_DIR}/orc_cm.pc.in ${PROJECT_BINARY_DIR}/package/orc_cm.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/orc_cm.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT orc_cm)

# The reference host looks for its property sets here.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/share/toolsets DESTINATION ${CMAKE_INSTALL_DATADIR}/orchard
  COMPONENT orc_cm OPTIONAL)

# The programs find the library and the reference host relative to themselves.
if(TARGET orchard)
  install(TARGETS orchard LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()
file(RELATIVE_PATH orc_lib_from_bin /p/${CMAKE_INSTALL_BINDIR} /p/${CMAKE_INSTALL_LIBDIR})
foreach(program orchard-cm)
  if(TARGET ${program})
    set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/${orc_lib_from_bin}")
  endif()
endforeach()
