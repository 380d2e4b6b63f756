# SPDX-License-Identifier: MIT
# tests/<room>/*.cpp make one program <room>_tests.
set(CMAKE_CXX_STANDARD 20) # also for what does not use the library
if(NOT WIN32) # there it is built with the tests: Windows.cmake
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)
file(GLOB rooms RELATIVE ${PROJECT_SOURCE_DIR}/tests CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*)
if(WIN32)
  list(REMOVE_ITEM rooms capi) # the interface for other hosts
  file(STRINGS ${PROJECT_SOURCE_DIR}/tests/com/left_out.txt left_out REGEX "^tests/")
  list(TRANSFORM left_out REPLACE " .*" "")
  list(TRANSFORM left_out PREPEND ${PROJECT_SOURCE_DIR}/)
endif()
foreach(room IN LISTS rooms)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${room}/*.cpp)
  list(REMOVE_ITEM sources ${left_out})
  if(sources)
    add_executable(${room}_tests ${sources})
    target_include_directories(${room}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${room}_tests PRIVATE vlgs_inside GTest::gtest GTest::gtest_main)
    if(WIN32) # scripts/test_windows.sh runs them under Wine
      target_include_directories(${room}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/windows)
      set_target_properties(${room}_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
      target_compile_options(${room}_tests PRIVATE -include ${PROJECT_SOURCE_DIR}/tests/support/windows/Host.h)
    else()
      gtest_discover_tests(${room}_tests TEST_PREFIX "${room}." DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 600 # met by what takes more than linear time
        ENVIRONMENT "VLGS_SOURCE_DIR=${PROJECT_SOURCE_DIR};VLGS_BINARY_DIR=${PROJECT_BINARY_DIR}")
    endif()
  endif()
  if(EXISTS ${PROJECT_SOURCE_DIR}/tests/${room}/CMakeLists.txt)
    add_subdirectory(${PROJECT_SOURCE_DIR}/tests/${room})
  endif()
endforeach()
