# A program outside the tree that finds the installed library. HOST is what links a host.
cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
find_package(orc_cm 0.1 REQUIRED)
separate_arguments(HOST UNIX_COMMAND "${HOST}")
add_executable(consumer main.cpp)
target_compile_features(consumer PRIVATE cxx_std_20)
target_link_libraries(consumer PRIVATE orc_cm::orc_cm_dll ${HOST})
