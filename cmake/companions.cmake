# The programs that Quellix.exe starts from its own folder.
add_executable(iea WIN32
  ${SHIPPED_START}
  companions/iea/iea.cpp
  companions/iea/form_values.cpp
  companions/iea/protected_store.cpp
  companions/iea/iea.rc)
set_source_files_properties(companions/iea/iea.rc PROPERTIES
  INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR}/src"
  OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/src/app/quellix.manifest;${CMAKE_SOURCE_DIR}/src/app/res/quellix_small.ico")
target_link_libraries(iea PRIVATE quellix_core quellix_runtime)
target_link_options(iea PRIVATE ${SHIPPED_LINK_OPTIONS})
