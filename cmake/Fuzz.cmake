# SPDX-License-Identifier: MIT
# fuzz/*Fuzz.cpp: one target each over an entry point that reads hostile input. clang links its libFuzzer; other
# compilers link a driver of our own that makes random inputs from a seed.
file(GLOB fuzzers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*Fuzz.cpp)
foreach(source IN LISTS fuzzers)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE vlgs_inside)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/SeededDriver.cpp)
  endif()
endforeach()
