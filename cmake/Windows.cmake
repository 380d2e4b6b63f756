# SPDX-License-Identifier: MIT
# The COM server: VlGeneralServices.dll with its type library inside, VlComRes.dll with the message texts, the manifest
# for use without registration, and GoogleTest for the tests that run under Wine.

# Nothing but the system's own libraries is needed at run time.
add_link_options(-static)

# What a release build makes is the same each time, carries no names of functions, and is put at addresses that cannot
# be foretold; the last is what newer linkers do by themselves.
set(VLGS_WINDOWS_LINK_OPTIONS -Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--nxcompat)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  list(APPEND VLGS_WINDOWS_LINK_OPTIONS -Wl,--high-entropy-va)
endif()
add_link_options(${VLGS_WINDOWS_LINK_OPTIONS} $<$<CONFIG:Release>:-s>)
target_link_options(VlGeneralServices PRIVATE -static ${VLGS_WINDOWS_LINK_OPTIONS} $<$<CONFIG:Release>:-s>)
target_link_libraries(vlgs_static PUBLIC oleaut32 ole32 uuid advapi32 mpr bcrypt)

# The type library. The definitions that it imports come with Wine's development files.
find_program(VLGS_WIDL NAMES ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl REQUIRED)
find_path(VLGS_IDL_DIR oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows REQUIRED
          NO_CMAKE_FIND_ROOT_PATH)
find_path(VLGS_TLB_DIR stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows REQUIRED
          NO_CMAKE_FIND_ROOT_PATH)
set(VLGS_IDL ${PROJECT_SOURCE_DIR}/typelib/VlGeneralServices.idl)
set(VLGS_TLB ${PROJECT_BINARY_DIR}/typelib/VlGeneralServices.tlb)
set(VLGS_HEADER ${PROJECT_BINARY_DIR}/typelib/VlGeneralServices/Interfaces.h)
# The compiler writes the time and the name of its source down: VLGS_WIDL_LAUNCHER can hold a command that stops the clock.
set(VLGS_WIDL_COMMAND ${VLGS_WIDL_LAUNCHER} ${VLGS_WIDL} -I ${VLGS_IDL_DIR} -L ${VLGS_TLB_DIR})
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/typelib/VlGeneralServices)
add_custom_command(OUTPUT ${VLGS_TLB} DEPENDS ${VLGS_IDL}
  COMMAND ${VLGS_WIDL_COMMAND} -t -o ${VLGS_TLB} VlGeneralServices.idl
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/typelib VERBATIM)
add_custom_command(OUTPUT ${VLGS_HEADER} DEPENDS ${VLGS_IDL}
  COMMAND ${VLGS_WIDL_COMMAND} -D VLGS_HEADER -h -o ${VLGS_HEADER} VlGeneralServices.idl
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/typelib VERBATIM)
add_custom_target(vlgs_header ALL DEPENDS ${VLGS_HEADER})

enable_language(RC)
# vlgs_version_resource(FILE TYPE DESCRIPTION RESOURCES STRINGS): what Windows shows of a file, with further strings, and
# further resources.
function(vlgs_version_resource file type description resources strings)
  get_filename_component(name ${file} NAME_WE)
  configure_file(${PROJECT_SOURCE_DIR}/src/com/Version.rc.in ${PROJECT_BINARY_DIR}/typelib/${name}.rc @ONLY)
endfunction()
vlgs_version_resource(VlGeneralServices.dll 2 "General services" "1 TYPELIB \"${VLGS_TLB}\""
                      "VALUE \"OLESelfRegister\", \"\"")
set_source_files_properties(${PROJECT_BINARY_DIR}/typelib/VlGeneralServices.rc PROPERTIES OBJECT_DEPENDS ${VLGS_TLB})
target_sources(VlGeneralServices PRIVATE ${PROJECT_SOURCE_DIR}/src/com/VlGeneralServices.def
               ${PROJECT_BINARY_DIR}/typelib/VlGeneralServices.rc)
set_target_properties(VlGeneralServices PROPERTIES PREFIX "" LINKER_LANGUAGE CXX
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
target_link_libraries(VlGeneralServices PRIVATE oleaut32 ole32 uuid advapi32 mpr bcrypt)
# The message texts: nothing but resources.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
file(GLOB VLGS_TEXTS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/VlComRes.*.txt)
set(VLGS_TEXTS_RC ${PROJECT_BINARY_DIR}/typelib/VlComRes.rc)
set(VLGS_TEXTS_TABLE ${PROJECT_BINARY_DIR}/typelib/VlComResTexts.rc)
vlgs_version_resource(VlComRes.dll 2 "Message texts of the general services" "#include \"${VLGS_TEXTS_TABLE}\"" "")
set(VLGS_TEXTS_DLL ${PROJECT_BINARY_DIR}/bin/VlComRes.dll)
add_custom_command(OUTPUT ${VLGS_TEXTS_DLL} DEPENDS ${VLGS_TEXTS} ${PROJECT_SOURCE_DIR}/scripts/string_tables.py
          ${VLGS_TEXTS_RC}
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/string_tables.py
          ${PROJECT_SOURCE_DIR}/resources/VlComRes.en.txt > ${VLGS_TEXTS_TABLE}
  COMMAND ${CMAKE_RC_COMPILER} -c 65001 ${VLGS_TEXTS_RC} ${VLGS_TEXTS_RC}.obj
  COMMAND ${CMAKE_CXX_COMPILER} -shared -nostdlib -s -Wl,--entry=0 ${VLGS_WINDOWS_LINK_OPTIONS}
          -o ${VLGS_TEXTS_DLL} ${VLGS_TEXTS_RC}.obj VERBATIM)
add_custom_target(VlComRes ALL DEPENDS ${VLGS_TEXTS_DLL})

configure_file(${PROJECT_SOURCE_DIR}/typelib/VlGeneralServices.manifest
               ${PROJECT_BINARY_DIR}/bin/VlGeneralServices.manifest COPYONLY)

if(VLGS_TESTS)
  # The distribution carries GoogleTest as source; its warnings are not ours.
  set(VLGS_GTEST_DIR /usr/src/googletest/googletest)
  add_library(gtest STATIC ${VLGS_GTEST_DIR}/src/gtest-all.cc)
  add_library(gtest_main STATIC ${VLGS_GTEST_DIR}/src/gtest_main.cc)
  target_include_directories(gtest SYSTEM PUBLIC ${VLGS_GTEST_DIR}/include PRIVATE ${VLGS_GTEST_DIR})
  target_compile_options(gtest PRIVATE -w)
  target_compile_options(gtest_main PRIVATE -w)
  target_link_libraries(gtest_main PUBLIC gtest)
  add_library(GTest::gtest ALIAS gtest)
  add_library(GTest::gtest_main ALIAS gtest_main)
endif()
