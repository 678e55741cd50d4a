# Compiler settings that every target shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

option(ORC_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
option(ORC_SANITIZE_THREAD "Thread sanitizer" OFF)

# Another checkout of the same sources finds what this one has compiled: paths count from the root of the tree, and
# what precompiled headers define does not depend on the time.
find_program(ORC_CCACHE ccache)
if(ORC_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=true
      CCACHE_SLOPPINESS=pch_defines,time_macros ${ORC_CCACHE})
endif()

find_program(ORC_LLD ld.lld)
if(ORC_LLD)
  add_link_options(-fuse-ld=lld) # takes a fraction of the default linker's time
endif()

add_library(orc_options INTERFACE)
target_compile_options(orc_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                             -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(ORC_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(ORC_SANITIZE_THREAD)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
if(ORC_BUILD_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link) # coverage in every library; the main loop only in a fuzz target
endif()
