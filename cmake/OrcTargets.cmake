# orc_add_library(NAME [SHARED] SOURCES ... LINKS ...): the library of one folder. Includes are written from the
# root of the tree; the link line names the folders that this one may include.
function(orc_add_library name)
  cmake_parse_arguments(ARG "SHARED" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  if(ARG_SHARED)
    add_library(${name} SHARED ${ARG_SOURCES})
  else()
    add_library(${name} STATIC ${ARG_SOURCES})
  endif()
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE $<BUILD_INTERFACE:orc_options> ${ARG_PRIVATE_LINKS})
endfunction()

# orc_add_program(NAME SOURCES ... LINKS ...)
function(orc_add_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE orc_options ${ARG_LINKS})
endfunction()

# orc_add_test(NAME SOURCES ... LINKS ... [FILTER PATTERN] [TIMEOUT SECONDS]): a GoogleTest program. CTest knows each of
# its tests, or of those that the filter lets through, as NAME.Suite.Test, with the folder as label.
function(orc_add_test name)
  cmake_parse_arguments(ARG "" "FILTER;TIMEOUT" "SOURCES;LINKS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  orc_add_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} GTest::gmock GTest::gtest GTest::gtest_main)
  target_precompile_headers(${name} REUSE_FROM test_headers)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
  gtest_discover_tests(${name} TEST_PREFIX ${name}. TEST_FILTER "${ARG_FILTER}" DISCOVERY_MODE PRE_TEST
                       NO_PRETTY_VALUES DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS ${folder})
endfunction()

# orc_check_headers(NAME FOLDER LINKS ...): compiles every header of a folder on its own, which proves that each
# is complete. The debug build does so for all.
function(orc_check_headers name folder)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR NOT ORC_BUILD_TESTS)
    return()
  endif()
  file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  set(sources)
  foreach(header ${headers})
    string(MAKE_C_IDENTIFIER ${header} id)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/header-checks/${id}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\" // is complete\n")
    list(APPEND sources ${source})
  endforeach()
  add_library(${name} OBJECT ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE orc_options ${ARG_LINKS})
endfunction()
