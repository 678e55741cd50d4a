# Installs the library into a directory of its own, and builds and runs a program against it: once with the CMake
# package, once with pkg-config. Takes BUILD, SOURCE, WORK, COMPILER, FLAGS, HOST, PKG_CONFIG, LIBDIR.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}\n${output}")
  endif()
endfunction()

set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/include)
run(${CMAKE_COMMAND} --install ${BUILD} --component orc_cm --prefix ${prefix})

# Every installed header, so that one that misses another is seen.
file(GLOB_RECURSE headers RELATIVE ${prefix}/include/orc_cm ${prefix}/include/orc_cm/*.h)
list(LENGTH headers count)
if(count LESS 40)
  message(FATAL_ERROR "only ${count} headers are installed")
endif()
list(TRANSFORM headers REPLACE "(.+)" "#include \"\\1\"\n")
list(JOIN headers "" text)
file(WRITE ${WORK}/include/all_headers.h "${text}")

separate_arguments(host UNIX_COMMAND "${HOST}")
separate_arguments(flags UNIX_COMMAND "${FLAGS} -I${WORK}/include")
# Under its own name it would count as a folder of the tests.
configure_file(${SOURCE}/consumer/Consumer.cmake ${WORK}/consumer/CMakeLists.txt COPYONLY)
configure_file(${SOURCE}/consumer/main.cpp ${WORK}/consumer/main.cpp COPYONLY)
run(${CMAKE_COMMAND} -S ${WORK}/consumer -B ${WORK}/cmake -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS} -I${WORK}/include" "-DHOST=${HOST}")
run(${CMAKE_COMMAND} --build ${WORK}/cmake)
run(${WORK}/cmake/consumer)

set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs orc_cm OUTPUT_VARIABLE package
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(package UNIX_COMMAND "${package}")
run(${COMPILER} -std=c++20 ${flags} ${SOURCE}/consumer/main.cpp ${package} ${host}
    -Wl,-rpath,${prefix}/${LIBDIR} -o ${WORK}/plain)
run(${WORK}/plain)
