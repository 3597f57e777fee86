# The rules alone, for the machine that builds: the logic tests and the fuzzers run them under sanitizers.
enable_testing()

# What the rules ask of the system is answered by the tests.
list(APPEND LOGIC_SOURCES tests/logic/support/wide_system_for_tests.cpp)

add_library(quellix_logic STATIC ${LOGIC_SOURCES})
target_include_directories(quellix_logic PUBLIC src companions)

# GoogleTest comes as sources from the distribution and is built with the sanitizers like everything else.
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest googletest EXCLUDE_FROM_ALL)
foreach(target gtest gtest_main gmock gmock_main)
  target_compile_options(${target} PRIVATE -w)
endforeach()

add_subdirectory(tests/logic)
add_subdirectory(tests/fuzz)
