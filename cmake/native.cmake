# The rules alone, for the machine that builds: the logic tests and the fuzzers run them under sanitizers.
enable_testing()

# What the rules ask of the system is answered by the tests.
list(APPEND LOGIC_SOURCES tests/logic/support/wide_system_for_tests.cpp)

add_library(quellix_logic STATIC ${LOGIC_SOURCES})
target_include_directories(quellix_logic PUBLIC src companions)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang AND CMAKE_CXX_FLAGS MATCHES sanitize)
  # Only instrumented code shows a fuzzer which inputs lead somewhere new; the logic tests do not mind.
  target_compile_options(quellix_logic PRIVATE -fsanitize=fuzzer-no-link)
endif()

include(cmake/googletest.cmake)
add_subdirectory(tests/logic)
add_subdirectory(tests/fuzz)
