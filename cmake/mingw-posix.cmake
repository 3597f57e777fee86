# The tests: GoogleTest needs std::mutex, which the other compiler lacks.
set(QUELLIX_THREADS posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
