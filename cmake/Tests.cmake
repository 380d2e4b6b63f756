# tests/<room>/*.cpp make one program <room>_tests.
if(NOT WIN32) # there it is built with the tests: Windows.cmake
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)
file(GLOB rooms RELATIVE ${PROJECT_SOURCE_DIR}/tests CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*)
foreach(room IN LISTS rooms)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${room}/*.cpp)
  if(sources)
    add_executable(${room}_tests ${sources})
    target_include_directories(${room}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${room}_tests PRIVATE vlgs_static GTest::gtest GTest::gtest_main)
    if(NOT WIN32) # scripts/test_windows.sh runs them under Wine
      gtest_discover_tests(${room}_tests TEST_PREFIX "${room}." DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "VLGS_SOURCE_DIR=${PROJECT_SOURCE_DIR};VLGS_BINARY_DIR=${PROJECT_BINARY_DIR}")
    endif()
  endif()
  if(EXISTS ${PROJECT_SOURCE_DIR}/tests/${room}/CMakeLists.txt)
    add_subdirectory(${PROJECT_SOURCE_DIR}/tests/${room})
  endif()
endforeach()
