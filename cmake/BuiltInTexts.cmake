# SPDX-License-Identifier: MIT
# Builds the files of the message texts into the library, which reads those where it finds no files.
file(GLOB texts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/VlComRes.*.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${texts})
set(rows "")
foreach(text IN LISTS texts)
  get_filename_component(name ${text} NAME)
  file(READ ${text} content)
  string(APPEND rows "    {\"${name}\", R\"text(${content})text\"},\n")
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/BuiltInTexts.cpp @ONLY CONTENT [=[
#include "platform/posix/BuiltInTexts.h"

namespace vlgs::posix {

namespace {

constexpr BuiltInText files[] = {
@rows@};

} // namespace

std::span<const BuiltInText> builtInTexts() noexcept {
    return files;
}

} // namespace vlgs::posix
]=])
target_sources(vlgs_platform PRIVATE ${PROJECT_BINARY_DIR}/generated/BuiltInTexts.cpp)
