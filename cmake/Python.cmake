# SPDX-License-Identifier: MIT
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
  # The compiled extension, where Python's headers are: one file for Python 3.9 and all later ones. It opens the shared
  # library itself. Without it the module goes through ctypes.
  find_package(Python3 3.9 COMPONENTS Interpreter QUIET OPTIONAL_COMPONENTS Development.Module)
  if(Python3_Development.Module_FOUND AND BUILD_SHARED_LIBS AND NOT VLGS_SANITIZE)
    file(GLOB VLGS_EXTENSION_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/python/extension/*.cpp)
    add_library(vlgs_python MODULE ${VLGS_EXTENSION_SOURCES})
    target_compile_features(vlgs_python PRIVATE cxx_std_20)
    target_include_directories(vlgs_python PRIVATE ${PROJECT_BINARY_DIR}/rooms/capi)
    target_include_directories(vlgs_python SYSTEM PRIVATE ${Python3_INCLUDE_DIRS})
    target_link_libraries(vlgs_python PRIVATE ${CMAKE_DL_LIBS})
    set_target_properties(vlgs_python PROPERTIES PREFIX "" OUTPUT_NAME _native SUFFIX .abi3.so
      LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/python/vlgs)
  endif()
  if(BUILD_SHARED_LIBS)
    if(NOT VLGS_PYTHON_DIR AND Python3_FOUND)
      execute_process(OUTPUT_VARIABLE VLGS_PYTHON_DIR OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/python_folder.py ${CMAKE_INSTALL_PREFIX})
    endif()
    if(NOT VLGS_PYTHON_DIR)
      set(VLGS_PYTHON_DIR lib/python3/dist-packages)
    endif()
    install(FILES ${VLGS_PYTHON_SOURCES} DESTINATION ${VLGS_PYTHON_DIR}/vlgs COMPONENT Python)
    if(TARGET vlgs_python)
      install(TARGETS vlgs_python LIBRARY DESTINATION ${VLGS_PYTHON_DIR}/vlgs COMPONENT Python)
    endif()
  endif()
endif()
