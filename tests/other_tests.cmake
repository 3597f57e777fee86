# The tests that are no Windows test program, so that one ctest run shows everything: the native rules, the shipped program
# used from outside, the audits.
set(logic "${CMAKE_SOURCE_DIR}/build/logic")
set(shipped "${CMAKE_SOURCE_DIR}/build/dist")

add_test(NAME logic/rules COMMAND ${logic}/tests/logic/logic_tests --gtest_brief=1)
file(GLOB fuzzers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/fuzz/*_fuzz.cpp)
foreach(source ${fuzzers})
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "_fuzz$" "" short ${name})
  add_test(NAME fuzz/${short} COMMAND ctest --test-dir ${logic} --output-on-failure -R ^fuzz/${short}$ --no-tests=error)
endforeach()

file(GLOB outside CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/ui/test_*.py)
foreach(source ${outside})
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "^test_" "" short ${name})
  add_test(NAME ui/${short} COMMAND ${QUELLIX_PYTHON} -B -m unittest -q tests.ui.${name}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(ui/${short} PROPERTIES TIMEOUT 900 COST 100)
endforeach()
# The longest ones begin first, so that none of them is left alone at the end.
set_tests_properties(ui/cookies ui/boss_key ui/schedule ui/shred_schedule ui/startup ui/shredder ui/invisible ui/killed
  ui/tally PROPERTIES COST 200)

foreach(part package manual)
  file(GLOB of_the_part CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${part}/test_*.py)
  foreach(source ${of_the_part})
    cmake_path(GET source STEM name)
    string(REGEX REPLACE "^test_" "" short ${name})
    add_test(NAME ${part}/${short} COMMAND ${QUELLIX_PYTHON} -B -m unittest -q tests.${part}.${name}
      WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set_tests_properties(${part}/${short} PROPERTIES TIMEOUT 300 COST 60)
  endforeach()
endforeach()

function(quellix_audit name)
  add_test(NAME audit/${name} COMMAND ${ARGN} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
endfunction()

set(audit_pe ${QUELLIX_PYTHON} -B -m tools.audit.audit_pe)
quellix_audit(imports ${audit_pe} ${shipped}/Quellix.exe --max-size 360448)
quellix_audit(imports_of_the_companion ${audit_pe} ${shipped}/iea.exe --max-size 40960)
foreach(program Quellix iea)
  quellix_audit(instructions/${program} ${QUELLIX_PYTHON} -B -m tools.audit.audit_instructions
    ${shipped}/${program}.exe build/win32/${program}.map)
endforeach()
# Builds its own program, linked as what ships is.
add_test(NAME runtime/probe COMMAND ${QUELLIX_PYTHON} -B -m unittest -q tests.runtime.test_runtime
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
quellix_audit(same_bytes_elsewhere bash tools/audit/same_bytes.sh)
quellix_audit(format bash tools/format.sh --all --check)
quellix_audit(lint ${QUELLIX_PYTHON} -B -m tools.lint --all)
set_tests_properties(audit/lint audit/same_bytes_elsewhere PROPERTIES COST 250)  # work all the time while the others wait
quellix_audit(rooms ${QUELLIX_PYTHON} -B -m tools.check_rooms)

file(GLOB tools CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/tools/test_*.py)
list(TRANSFORM tools REPLACE "^.*/(test_[^/]*)\\.py$" "tests.tools.\\1")
quellix_audit(of_the_tools ${QUELLIX_PYTHON} -B -m unittest -q ${tools})

add_subdirectory(${CMAKE_SOURCE_DIR}/tests/standin ${CMAKE_BINARY_DIR}/tests/standin)
file(GLOB with_standin CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/standin/test_*.py)
foreach(source ${with_standin})
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "^test_" "" short ${name})
  add_test(NAME standin/${short} COMMAND ${QUELLIX_PYTHON} -B -m unittest -q tests.standin.${name}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(standin/${short} PROPERTIES TIMEOUT 900 COST 120)
endforeach()
