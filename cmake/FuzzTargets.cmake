# orc_add_fuzz(NAME SOURCES ... LINKS ...): adds a libFuzzer program, which CTest runs for a short time on its seed
# corpus in fuzz/corpus/NAME and its earlier findings. OrcOptions instruments the libraries.
set(ORC_FUZZ_SMOKE_SECONDS 10 CACHE STRING "How long CTest runs each fuzz target")

function(orc_add_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzz targets need clang++: use the preset \"fuzz\".")
  endif()
  orc_add_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
  set(found ${CMAKE_CURRENT_BINARY_DIR}/found/${name})
  file(MAKE_DIRECTORY ${found})
  set(corpus ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
  if(NOT EXISTS ${corpus})
    set(corpus)
  endif()
  add_test(NAME ${name} COMMAND ${name} -max_total_time=${ORC_FUZZ_SMOKE_SECONDS} -timeout=10 -rss_limit_mb=2048
                                -print_final_stats=1 -artifact_prefix=${CMAKE_CURRENT_BINARY_DIR}/ ${found} ${corpus})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 1200)
endfunction()
