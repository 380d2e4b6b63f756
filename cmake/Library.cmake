# SPDX-License-Identifier: MIT
# Each room is one object library; all of them make the library. A file placed in a room is built with it.
if(WIN32)
  set(VLGS_OTHER_HOST posix)
else()
  set(VLGS_OTHER_HOST windows)
endif()

# vlgs_room(NAME [ROOM...]): a room and those right below it, whose headers, with all that they may include, are the
# only ones that it can. For this each room's headers have an include path of their own, a folder of the build tree
# that holds nothing but a link to the room.
set(VLGS_ROOMS)
set(VLGS_OBJECTS)
function(vlgs_room room)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${room}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/src/[a-z]+/${VLGS_OTHER_HOST}/")
  set(headers ${PROJECT_BINARY_DIR}/rooms/${room})
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${room} ${headers}/${room} SYMBOLIC)
  add_library(vlgs_${room} OBJECT ${sources})
  target_include_directories(vlgs_${room} PUBLIC ${headers})
  target_compile_features(vlgs_${room} PUBLIC cxx_std_20)
  target_compile_definitions(vlgs_${room} PRIVATE VLGS_BUILDING)
  list(TRANSFORM ARGN PREPEND vlgs_ OUTPUT_VARIABLE below)
  target_link_libraries(vlgs_${room} PUBLIC ${below})
  set(VLGS_ROOMS ${VLGS_ROOMS} ${room} PARENT_SCOPE)
  set(VLGS_OBJECTS ${VLGS_OBJECTS} $<TARGET_OBJECTS:vlgs_${room}> PARENT_SCOPE)
endfunction()

vlgs_room(base)
vlgs_room(platform base)
if(NOT WIN32) # there they are a file of resources, Windows.cmake
  include(cmake/BuiltInTexts.cmake)
endif()
vlgs_room(automation platform)
vlgs_room(frame automation)

vlgs_room(ini frame)
vlgs_room(registry frame)
vlgs_room(conversion frame)
vlgs_room(viewprops frame)
vlgs_room(packager frame)
vlgs_room(general frame)
vlgs_room(cipher frame)
vlgs_room(dde frame)
vlgs_room(files ini general)
vlgs_room(locking files viewprops)

vlgs_room(library registry conversion packager cipher dde locking)
if(WIN32)
  vlgs_room(com library)
else()
  vlgs_room(capi library)
endif()

set(VLGS_VERSION_DEFINITIONS
    VLGS_VERSION_MAJOR=${PROJECT_VERSION_MAJOR} VLGS_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    VLGS_VERSION_REVISION=${PROJECT_VERSION_TWEAK} VLGS_VERSION_TEXT="${PROJECT_VERSION}")
add_compile_definitions(${VLGS_VERSION_DEFINITIONS})

# The library linked into a program, for callers who want no shared one.
add_library(vlgs_static STATIC ${VLGS_OBJECTS})
set_target_properties(vlgs_static PROPERTIES EXPORT_NAME VlGeneralServices)

# The same with every header: what the project's own tests, benchmarks and tools use.
add_library(vlgs_inside INTERFACE)
target_link_libraries(vlgs_inside INTERFACE vlgs_static)
target_include_directories(vlgs_inside INTERFACE ${PROJECT_SOURCE_DIR}/src)

# The shared library exports what a public header declares: on Windows by attribute, elsewhere by visibility, and there
# nothing of the standard library's templates either.
add_library(VlGeneralServices SHARED ${VLGS_OBJECTS})
if(NOT WIN32)
  set_target_properties(VlGeneralServices PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
  set(VLGS_EXPORTS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(VlGeneralServices PRIVATE -Wl,--version-script=${VLGS_EXPORTS})
  set_target_properties(VlGeneralServices PROPERTIES LINK_DEPENDS ${VLGS_EXPORTS})
endif()

foreach(library vlgs_static VlGeneralServices)
  add_dependencies(${library} vlgs_headers)
  target_compile_features(${library} PUBLIC cxx_std_20)
  target_include_directories(${library} INTERFACE
    $<BUILD_INTERFACE:${VLGS_INCLUDE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()

if(BUILD_SHARED_LIBS)
  set(VLGS_LINKED_LIBRARY VlGeneralServices)
else()
  set(VLGS_LINKED_LIBRARY vlgs_static)
  set_target_properties(vlgs_static PROPERTIES OUTPUT_NAME VlGeneralServices)
endif()
add_library(VlGeneralServices::VlGeneralServices ALIAS ${VLGS_LINKED_LIBRARY})

# The message texts are looked for beside the library.
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/resources ${PROJECT_BINARY_DIR}/resources SYMBOLIC)
