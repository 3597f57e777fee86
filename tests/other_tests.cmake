# The tests that are no Windows test program, so that one ctest run shows everything: the native rules, the shipped program
# used from outside, the audits.
find_program(QUELLIX_PYTHON python3 REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(logic "${CMAKE_SOURCE_DIR}/build/logic")
set(shipped "${CMAKE_SOURCE_DIR}/build/dist")

add_test(NAME logic/rules COMMAND ${logic}/tests/logic/logic_tests --gtest_brief=1)
add_test(NAME logic/fuzzers COMMAND ctest --test-dir ${logic} --output-on-failure -R fuzz)

file(GLOB outside CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/ui/test_*.py)
foreach(source ${outside})
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "^test_" "" short ${name})
  add_test(NAME ui/${short} COMMAND ${QUELLIX_PYTHON} -B -m unittest -q ${name}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}/tests/ui)
  set_tests_properties(ui/${short} PROPERTIES TIMEOUT 300)
endforeach()

add_test(NAME audit/imports COMMAND ${QUELLIX_PYTHON} -B ${CMAKE_SOURCE_DIR}/tools/audit/audit_pe.py ${shipped}/Quellix.exe --max-size 409600)
add_test(NAME audit/imports_of_the_companion COMMAND ${QUELLIX_PYTHON} -B ${CMAKE_SOURCE_DIR}/tools/audit/audit_pe.py ${shipped}/iea.exe --max-size 131072)
add_test(NAME audit/wording COMMAND ${QUELLIX_PYTHON} -B ${CMAKE_SOURCE_DIR}/tools/audit/wording.py ${CMAKE_SOURCE_DIR})
add_test(NAME audit/same_bytes_elsewhere COMMAND bash ${CMAKE_SOURCE_DIR}/tools/audit/same_bytes.sh)
add_test(NAME audit/format COMMAND bash ${CMAKE_SOURCE_DIR}/tools/format.sh --all --check)
add_test(NAME audit/of_the_audits COMMAND ${QUELLIX_PYTHON} -B -m unittest discover -q ${CMAKE_SOURCE_DIR}/tests/tools)

add_subdirectory(${CMAKE_SOURCE_DIR}/tests/standin ${CMAKE_BINARY_DIR}/tests/standin)
file(GLOB with_standin CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/standin/test_*.py)
foreach(source ${with_standin})
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "^test_" "" short ${name})
  add_test(NAME standin/${short} COMMAND ${QUELLIX_PYTHON} -B -m unittest -q tests.standin.${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(standin/${short} PROPERTIES TIMEOUT 300)
endforeach()
