# The program itself, and with QUELLIX_TESTS the programs that test it under Wine.
enable_language(RC)
option(QUELLIX_TESTS "build the test programs" OFF)

# What the oldest supported systems have; everything later is bound late.
add_compile_definitions(WINVER=0x0400 _WIN32_WINNT=0x0400 _WIN32_WINDOWS=0x0400 _WIN32_IE=0x0400)
add_compile_options(
  -march=i486 -mtune=i686 -fno-threadsafe-statics -ffunction-sections
  "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
# The program's own addresses; no quotes reach the resource compiler.
add_compile_definitions(
  "$<$<COMPILE_LANGUAGE:CXX>:QUELLIX_PROBE_ADDRESS=\"${QUELLIX_PROBE_ADDRESS}\">"
  "$<$<COMPILE_LANGUAGE:CXX>:QUELLIX_HELP_ADDRESS=\"${QUELLIX_HELP_ADDRESS}\">"
  "$<$<COMPILE_LANGUAGE:CXX>:QUELLIX_CONTACT_ADDRESS=\"${QUELLIX_CONTACT_ADDRESS}\">")

if(NOT QUELLIX_TESTS)
  # The whole program is optimised when it is linked, in one piece: the compiler fails on programs of several pieces.
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
  add_link_options(-march=i486 -mtune=i686 -ffunction-sections -flto=1 -flto-partition=one)
  # A buffer that is written over its end ends the program (src/platform/startup.cpp), and a variable without a value is zero.
  set(hardening -fstack-protector-strong -ftrivial-auto-var-init=zero)
  add_compile_options(${hardening})
  # Arguments are pushed, and frames begin at any multiple of four, which is all that Windows asks for and no instruction of a
  # 486 asks for more. The compiler allows the first where no frame is probed page by page, which none needs that is smaller
  # than a page: a larger one is an error.
  set(frames -mno-stack-arg-probe -mno-accumulate-outgoing-args -mpreferred-stack-boundary=2)
  add_compile_options(${frames})
  add_link_options(${frames} -Werror=frame-larger-than=3000)
endif()
# The standard library looks whether it is used by its rules, also in what ships.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

if(QUELLIX_TESTS)
  # Compile options only: the linker would look for a runtime library that this system's compiler has not.
  add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error)
endif()

# An archive in image form: each object is compiled once and linked where it is needed.
add_library(quellix_core STATIC ${LOGIC_SOURCES} ${WINDOWS_SOURCES})
target_include_directories(quellix_core PUBLIC src)
# Half of the time of a build goes into reading these. Whether a source includes what it names tells tools/check_rooms.py.
target_precompile_headers(quellix_core PRIVATE src/platform/win32.h
  <algorithm> <array> <cstddef> <cstdint> <optional> <span> <string> <string_view> <utility> <vector>)
if(QUELLIX_TESTS)
  # Out of a precompiled header these take the system's copying of short texts for ours. The build of what ships looks at both.
  target_compile_options(quellix_core PRIVATE -Wno-array-bounds -Wno-stringop-overread)
endif()
target_link_libraries(quellix_core PUBLIC comctl32 advapi32 user32 gdi32 kernel32)

if(NOT QUELLIX_TESTS)
  include(cmake/shipped.cmake)
  add_subdirectory(bench)
endif()

if(QUELLIX_TESTS)
  enable_testing()
  # The interpreter itself: what a manager of versions puts in its place starts a dozen shells each time.
  execute_process(COMMAND python3 -c "import sys; print(sys.executable)"
    OUTPUT_VARIABLE QUELLIX_PYTHON OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  add_subdirectory(tests/win)
  include(tests/other_tests.cmake)
  # A change that breaks a benchmark shows at once.
  add_library(bench_compiles OBJECT bench/walk.cpp bench/profiles.cpp bench/cache.cpp bench/cookies.cpp bench/shred.cpp)
  target_include_directories(bench_compiles PRIVATE tests/win/support)
  target_link_libraries(bench_compiles PRIVATE quellix_core)
endif()
