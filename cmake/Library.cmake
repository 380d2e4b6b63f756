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
  list(TRANSFORM ARGN PREPEND vlgs_ OUTPUT_VARIABLE below)
  target_link_libraries(vlgs_${room} PUBLIC ${below})
  set(VLGS_ROOMS ${VLGS_ROOMS} ${room} PARENT_SCOPE)
  set(VLGS_OBJECTS ${VLGS_OBJECTS} $<TARGET_OBJECTS:vlgs_${room}> PARENT_SCOPE)
endfunction()

vlgs_room(base)
vlgs_room(platform base)
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
