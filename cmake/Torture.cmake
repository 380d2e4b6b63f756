# torture/*.cpp: programs that are killed and stopped at work; scripts beside them set them going and judge. A short
# share of each is a test.
file(GLOB programs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/torture/*.cpp)
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
if(Python3_FOUND AND NOT WIN32)
  add_test(NAME torture.locks COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/torture/locks.py
    --processes 4 --steps 150 --life 0.5 -- $<TARGET_FILE:LockTaker>)
  set_tests_properties(torture.locks PROPERTIES TIMEOUT 600)
endif()
