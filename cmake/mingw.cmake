# The 32-bit Windows compiler in the thread model that QUELLIX_THREADS names.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-${QUELLIX_THREADS})  # GoogleTest names C among its languages
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-${QUELLIX_THREADS})
foreach(language C CXX)  # archives of objects that are optimised when they are linked
  set(CMAKE_${language}_COMPILER_AR i686-w64-mingw32-gcc-ar-${QUELLIX_THREADS})
  set(CMAKE_${language}_COMPILER_RANLIB i686-w64-mingw32-gcc-ranlib-${QUELLIX_THREADS})
endforeach()
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_RC_FLAGS_INIT "-c 1252")
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
