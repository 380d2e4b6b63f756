# Each room is one object library; all of them make the library. A file placed in a room is built with it.
set(VLGS_ROOMS base automation platform frame ini registry files locking conversion viewprops packager general
               cipher dde library)
if(WIN32)
  list(APPEND VLGS_ROOMS com)
  set(VLGS_HOST windows)
  set(VLGS_OTHER_HOST posix)
else()
  list(APPEND VLGS_ROOMS capi)
  set(VLGS_HOST posix)
  set(VLGS_OTHER_HOST windows)
endif()

set(VLGS_OBJECTS)
foreach(room IN LISTS VLGS_ROOMS)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${room}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/src/[a-z]+/${VLGS_OTHER_HOST}/")
  if(sources)
    add_library(vlgs_${room} OBJECT ${sources})
    target_include_directories(vlgs_${room} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    list(APPEND VLGS_OBJECTS $<TARGET_OBJECTS:vlgs_${room}>)
  endif()
endforeach()

set(VLGS_VERSION_DEFINITIONS
    VLGS_VERSION_MAJOR=${PROJECT_VERSION_MAJOR} VLGS_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    VLGS_VERSION_REVISION=${PROJECT_VERSION_TWEAK} VLGS_VERSION_TEXT="${PROJECT_VERSION}")
add_compile_definitions(${VLGS_VERSION_DEFINITIONS})

# The library linked into a program: what tests, benchmarks and tools use.
add_library(vlgs_static STATIC ${VLGS_OBJECTS})
target_include_directories(vlgs_static PUBLIC ${PROJECT_SOURCE_DIR}/src)

if(NOT WIN32)
  add_library(VlGeneralServices SHARED ${VLGS_OBJECTS})
  set_target_properties(VlGeneralServices PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
  target_compile_features(VlGeneralServices INTERFACE cxx_std_20)
  target_include_directories(VlGeneralServices INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/VlGeneralServices>)
endif()
