# SPDX-License-Identifier: MIT
file(GLOB VLGS_TOOL_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/vlgs/*.cpp)
if(VLGS_TOOL_SOURCES)
  add_executable(vlgs ${VLGS_TOOL_SOURCES})
  target_link_libraries(vlgs PRIVATE vlgs_inside ${CMAKE_DL_LIBS})
  if(WIN32)
    vlgs_version_resource(vlgs.exe 1 "Command line of the general services" "" "")
    target_sources(vlgs PRIVATE ${PROJECT_BINARY_DIR}/typelib/vlgs.rc)
  endif()

  # A program that brings the compiler's library along starts in two thirds of the time.
  include(CheckLinkerFlag)
  check_linker_flag(CXX -static-libstdc++ VLGS_HAS_STATIC_RUNTIME)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND VLGS_HAS_STATIC_RUNTIME AND NOT VLGS_SANITIZE)
    target_link_options(vlgs PRIVATE -static-libstdc++ -static-libgcc)
  endif()

  set_target_properties(vlgs PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

  # The manual page and what completes names in shells are the program's own output, where it can run.
  if(NOT CMAKE_CROSSCOMPILING AND NOT WIN32)
    set(VLGS_MANUAL ${PROJECT_BINARY_DIR}/share/vlgs.1)
    set(VLGS_COMPLETIONS)
    add_custom_command(OUTPUT ${VLGS_MANUAL} DEPENDS vlgs VERBATIM
      COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/share
      COMMAND vlgs manual > ${VLGS_MANUAL})
    foreach(shell bash zsh fish)
      set(script ${PROJECT_BINARY_DIR}/share/completion.${shell})
      add_custom_command(OUTPUT ${script} DEPENDS vlgs VERBATIM
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/share
        COMMAND vlgs completion ${shell} > ${script})
      list(APPEND VLGS_COMPLETIONS ${script})
    endforeach()
    add_custom_target(vlgs_manual ALL DEPENDS ${VLGS_MANUAL} ${VLGS_COMPLETIONS})
  endif()
endif()
