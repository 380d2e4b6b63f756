# SPDX-License-Identifier: MIT
# compare/Compare*.cpp: programs that set the library against the system that it runs on.
file(GLOB programs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/compare/Compare*.cpp)
foreach(source IN LISTS programs)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE vlgs_inside)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endforeach()
