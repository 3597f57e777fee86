# GoogleTest, which comes as sources from the distribution and is built with the options of the tests, and what test programs
# share. Their own code is neither optimised nor parsed anew in each of them: most of the time of a build would go there.
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest googletest EXCLUDE_FROM_ALL)
foreach(target gtest gtest_main gmock gmock_main)
  target_compile_options(${target} PRIVATE -w -O0 -g0 -fno-sanitize=undefined)
endforeach()

set(TEST_COMPILE_OPTIONS -O0)
set(TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h> <algorithm> <functional> <map> <string> <vector>)
