# Quellix.exe and iea.exe, as they ship.
include(cmake/runtime.cmake)

# What ships loads on the oldest supported systems, at a fixed address, and comes out the same wherever it is built. The map
# tells the audits and the table of sizes what stands where.
set(SHIPPED_LINK_OPTIONS
  -static -nostdlib -s
  -Wl,--gc-sections -Wl,--disable-auto-import
  -Wl,--major-os-version,4 -Wl,--minor-os-version,0
  -Wl,--major-subsystem-version,4 -Wl,--minor-subsystem-version,0
  -Wl,--disable-dynamicbase -Wl,--disable-reloc-section
  # Old systems ignore these: no execution of data, no rewriting for terminal servers, no handler of structured exceptions.
  -Wl,--nxcompat -Wl,--tsaware -Wl,--no-seh
  -Wl,--no-insert-timestamp
  -Wl,-Map,$<TARGET_FILE_DIR:$<TARGET_PROPERTY:NAME>>/$<TARGET_PROPERTY:NAME>.map)
# First of all sources: how the program begins.
set(SHIPPED_START $<TARGET_OBJECTS:quellix_startup> ${CMAKE_SOURCE_DIR}/src/platform/standard_errors.cpp)

add_executable(Quellix WIN32 ${SHIPPED_START} src/platform/overwriting_delete.cpp src/app/WinMain.cpp src/app/quellix.rc)
set_source_files_properties(src/app/quellix.rc PROPERTIES
  INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR}/src"
  OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/src/app/quellix.manifest")
file(GLOB panel_templates CONFIGURE_DEPENDS src/*/*.rc src/*/*_ids.h src/app/res/*)
set_property(SOURCE src/app/quellix.rc APPEND PROPERTY OBJECT_DEPENDS "${panel_templates}")
target_link_libraries(Quellix PRIVATE quellix_core quellix_runtime)
target_link_options(Quellix PRIVATE ${SHIPPED_LINK_OPTIONS})
include(cmake/companions.cmake)
add_subdirectory(tests/runtime)
