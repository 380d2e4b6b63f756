# The Python module beside the library, in the build tree as in the installed tree: PYTHONPATH=<folder>/python.
if(NOT WIN32)
  file(GLOB VLGS_PYTHON_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/python/vlgs/*.py
       ${PROJECT_SOURCE_DIR}/python/vlgs/*.pyi ${PROJECT_SOURCE_DIR}/python/vlgs/py.typed)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/python/vlgs)
  foreach(source IN LISTS VLGS_PYTHON_SOURCES)
    get_filename_component(name ${source} NAME)
    file(CREATE_LINK ${source} ${PROJECT_BINARY_DIR}/python/vlgs/${name} COPY_ON_ERROR SYMBOLIC)
  endforeach()
  install(FILES ${VLGS_PYTHON_SOURCES} DESTINATION python/vlgs)
endif()
