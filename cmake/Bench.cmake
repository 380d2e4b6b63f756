# SPDX-License-Identifier: MIT
# bench/*Bench.cpp: one program each, with the peers it measures against.
find_package(benchmark REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(GLIB IMPORTED_TARGET gobject-2.0)
file(GLOB benches CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*Bench.cpp)
foreach(source IN LISTS benches)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE vlgs_inside benchmark::benchmark benchmark::benchmark_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
endforeach()

# Peers of single benchmarks.
pkg_check_modules(CRYPTOPP REQUIRED IMPORTED_TARGET libcrypto++)
target_link_libraries(CipherBench PRIVATE PkgConfig::CRYPTOPP)
target_link_libraries(INIBench PRIVATE PkgConfig::GLIB INIReader)
target_link_libraries(InvokeBench PRIVATE PkgConfig::GLIB)

# The peer of bench/PythonBench.py.
find_path(PYBIND11_INCLUDE pybind11/pybind11.h)
if(TARGET vlgs_python AND PYBIND11_INCLUDE)
  add_library(vlgs_peer MODULE ${PROJECT_SOURCE_DIR}/bench/PythonPeer.cpp)
  target_include_directories(vlgs_peer PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_include_directories(vlgs_peer SYSTEM PRIVATE ${PYBIND11_INCLUDE} ${Python3_INCLUDE_DIRS})
  target_link_libraries(vlgs_peer PRIVATE VlGeneralServices)
  set_target_properties(vlgs_peer PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
endif()
