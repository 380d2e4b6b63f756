# The Python module: in the build tree in "python", installed where the interpreter of the prefix looks by itself,
# or in the folder below the prefix that VLGS_PYTHON_DIR names.
if(NOT WIN32)
  file(GLOB VLGS_PYTHON_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/python/vlgs/*.py
       ${PROJECT_SOURCE_DIR}/python/vlgs/*.pyi ${PROJECT_SOURCE_DIR}/python/vlgs/py.typed)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/python/vlgs)
  foreach(source IN LISTS VLGS_PYTHON_SOURCES)
    get_filename_component(name ${source} NAME)
    file(CREATE_LINK ${source} ${PROJECT_BINARY_DIR}/python/vlgs/${name} COPY_ON_ERROR SYMBOLIC)
  endforeach()
  if(BUILD_SHARED_LIBS)
    find_package(Python3 COMPONENTS Interpreter QUIET)
    if(NOT VLGS_PYTHON_DIR AND Python3_FOUND)
      execute_process(OUTPUT_VARIABLE VLGS_PYTHON_DIR OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/python_folder.py ${CMAKE_INSTALL_PREFIX})
    endif()
    if(NOT VLGS_PYTHON_DIR)
      set(VLGS_PYTHON_DIR lib/python3/dist-packages)
    endif()
    install(FILES ${VLGS_PYTHON_SOURCES} DESTINATION ${VLGS_PYTHON_DIR}/vlgs)
  endif()
endif()
