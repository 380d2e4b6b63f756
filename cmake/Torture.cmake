# SPDX-License-Identifier: MIT
# torture/*.cpp: programs that are killed and stopped at work, which scripts beside them set going and judge. A short
# share of that is a test.
file(GLOB programs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/torture/*.cpp)
if(WIN32)
  set(programs ${PROJECT_SOURCE_DIR}/torture/LockTaker.cpp ${PROJECT_SOURCE_DIR}/torture/windows/ComLoops.cpp)
endif()
foreach(source IN LISTS programs)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE vlgs_inside)
  if(WIN32)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
  else()
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/torture)
  endif()
endforeach()

find_package(Python3 3.9 COMPONENTS Interpreter)
if(WIN32)
  target_link_libraries(ComLoops PRIVATE psapi)
elseif(Python3_FOUND)
  add_test(NAME torture.locks COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/torture/locks.py
    --processes 4 --steps 150 --life 0.5 -- $<TARGET_FILE:LockTaker>)
  add_test(NAME torture.kills COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/torture/run.py
    --build ${PROJECT_BINARY_DIR} 0.4 "kills at")
  set_tests_properties(torture.locks torture.kills PROPERTIES TIMEOUT 600)
endif()
