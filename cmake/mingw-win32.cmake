# What ships: the compiler with the system's own threads; the other one's thread library needs Windows XP.
set(QUELLIX_THREADS win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
