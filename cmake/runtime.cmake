# The C++ runtime of what ships, compiled for the 486 from the compiler's own source package; docs/runtime.md says why.
enable_language(C)

# The cross compiler's package is built from the source package; its version is that one's with a part of its own appended.
string(REGEX MATCH "^[0-9]+" compiler_major "${CMAKE_CXX_COMPILER_VERSION}")
set(source_package gcc-${compiler_major}-source)
foreach(package g++-mingw-w64-i686-win32 ${source_package})
  execute_process(COMMAND dpkg-query -W -f "\${Version}" ${package} OUTPUT_VARIABLE version_of_${package} ERROR_QUIET)
endforeach()
set(source_version "${version_of_${source_package}}")
set(compiler_version "${version_of_g++-mingw-w64-i686-win32}")
string(FIND "${compiler_version}+" "${source_version}+" place)
if(source_version STREQUAL "" OR NOT place EQUAL 0)
  message(FATAL_ERROR "The runtime is compiled from the cross compiler's own sources, but g++-mingw-w64-i686-win32 is of "
    "version '${compiler_version}' and ${source_package} of '${source_version}'; install both of the same version.")
endif()
string(REGEX MATCH "^[0-9.]+" release "${source_version}")
set(source_name gcc-${release})
file(GLOB source_archive /usr/src/gcc-${compiler_major}/${source_name}*.tar.xz)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source_archive})

# Exceptions, type information, new and delete.
set(support_parts
  bad_alloc bad_array_new bad_cast bad_typeid
  class_type_info fundamental_type_info pbase_type_info pointer_type_info si_class_type_info vmi_class_type_info
  del_op del_ops del_opv del_opvs new_handler new_op new_opnt new_opv
  dyncast eh_alloc eh_aux_runtime eh_call eh_catch eh_exception eh_globals eh_personality eh_term_handler eh_terminate
  eh_throw eh_type eh_unex_handler pure tinfo)
list(TRANSFORM support_parts REPLACE "(.+)" "libstdc++-v3/libsupc++/\\1.cc")
# The tree of std::map and std::set, and the unwinder.
set(runtime_sources ${support_parts} libstdc++-v3/src/c++98/tree.cc
  libgcc/unwind-c.c libgcc/unwind-dw2.c libgcc/unwind-dw2-fde.c)
set(runtime_headers
  libgcc/gthr.h libgcc/gthr-single.h libgcc/unwind-dw2.h libgcc/unwind-dw2-fde.h libgcc/unwind-pe.h libgcc/unwind.inc
  include/dwarf2.h include/dwarf2.def)
foreach(header cxxabi_init_exception.h eh_atomics.h eh_term_handler.h exception_defines.h tinfo.h unwind-cxx.h cxxabi.h)
  list(APPEND runtime_headers libstdc++-v3/libsupc++/${header})
endforeach()

set(runtime_folder "${CMAKE_BINARY_DIR}/runtime")
file(MAKE_DIRECTORY "${runtime_folder}")
list(TRANSFORM runtime_sources PREPEND "${source_name}/" OUTPUT_VARIABLE packed)
list(TRANSFORM runtime_headers PREPEND "${source_name}/" OUTPUT_VARIABLE packed_headers)
list(TRANSFORM packed PREPEND "${runtime_folder}/" OUTPUT_VARIABLE unpacked)
add_custom_command(OUTPUT ${unpacked}
  COMMAND ${CMAKE_COMMAND} -E tar xf "${source_archive}" ${packed} ${packed_headers}
  COMMAND ${CMAKE_COMMAND} -E touch ${unpacked}
  WORKING_DIRECTORY "${runtime_folder}"
  DEPENDS "${source_archive}"
  COMMENT "Unpacking the compiler's runtime" VERBATIM)

# Headers that the compiler's own build makes for itself, as far as these sources look into them.
set(stand_ins "${runtime_folder}/stand_ins")
foreach(empty auto-target.h coretypes.h libgcc_tm.h md-unwind-support.h tconfig.h)
  file(CONFIGURE OUTPUT "${stand_ins}/${empty}" CONTENT "")
endforeach()
file(CONFIGURE OUTPUT "${stand_ins}/tm.h" CONTENT
"#define DWARF2_UNWIND_INFO 1
#define DWARF_REG_TO_UNWIND_COLUMN(r) (r)
")
file(CONFIGURE OUTPUT "${stand_ins}/tsystem.h" CONTENT
"#include <stddef.h>
#include <stdlib.h>
#include <string.h>
#define gcc_assert(condition) ((condition) ? (void)0 : abort())
#define gcc_unreachable() __builtin_unreachable()
#define ATTRIBUTE_UNUSED __attribute__((unused))
")
# One thread: no locks, no storage per thread, and a small reserve for exceptions without memory.
file(CONFIGURE OUTPUT "${stand_ins}/gthr-default.h" CONTENT "#include \"gthr-single.h\"\n")
file(CONFIGURE OUTPUT "${stand_ins}/bits/gthr-default.h" CONTENT "#include <bits/gthr-single.h>\n")
file(CONFIGURE OUTPUT "${stand_ins}/bits/c++config.h" CONTENT
"#pragma once
#include_next <bits/c++config.h>
#undef _GLIBCXX_HAVE_TLS
")

# With what we put in the place of ready-made parts. Those that generated code asks for are compiled without link-time
# optimisation, which would have dropped them by then.
add_library(quellix_runtime STATIC ${unpacked} src/platform/floor.cpp)
set_source_files_properties(src/platform/floor.cpp PROPERTIES COMPILE_OPTIONS -fno-lto)
set_target_properties(quellix_runtime PROPERTIES CXX_STANDARD 17 CXX_EXTENSIONS ON)
target_include_directories(quellix_runtime PRIVATE
  "${stand_ins}" "${runtime_folder}/${source_name}/libstdc++-v3/libsupc++" "${runtime_folder}/${source_name}/libgcc"
  "${runtime_folder}/${source_name}/include")
target_compile_options(quellix_runtime PRIVATE -Os -w -fno-stack-protector -ftrivial-auto-var-init=uninitialized
  $<$<COMPILE_LANGUAGE:C>:-fexceptions -fbuilding-libgcc -DIN_LIBGCC2>)
# Two functions that the compiler only asks for while it generates code, when link-time optimisation has already chosen.
target_link_options(quellix_runtime INTERFACE -Wl,-u,__Unwind_Resume -Wl,-u,___gcc_personality_v0)

# The unwind tables begin with the first object and end with the last one. The end also has to be the last of these libraries:
# the linker fails on functions that only the optimised code asks for, such as strlen, when the library that has them is the
# last one that anything was taken from.
add_library(quellix_startup OBJECT src/platform/startup.cpp)
add_library(quellix_tables_end STATIC src/platform/unwind_tables_end.cpp)
set_target_properties(quellix_startup quellix_tables_end PROPERTIES INTERPROCEDURAL_OPTIMIZATION OFF)
target_include_directories(quellix_startup PRIVATE src)
target_link_options(quellix_tables_end INTERFACE -Wl,-u,_unwindTablesEnd)
target_link_libraries(quellix_runtime INTERFACE gcc msvcrt quellix_tables_end)
