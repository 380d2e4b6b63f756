# SPDX-License-Identifier: MIT
# What callers include as <VlGeneralServices/NAME.h>: these headers, each under its bare name. They are gathered in the
# build tree, from where they are installed; a header that would take others along which are not listed fails the build.
set(VLGS_PUBLIC_HEADERS
    library/VlGeneralServices.h library/Classes.h
    cipher/Cipher.h
    conversion/Conversion.h conversion/AttributeTypes.h conversion/LocaleRecord.h
    dde/DDE.h
    files/Files.h
    general/General.h general/DimensionCopyTypes.h general/GUID.h
    ini/Buffer.h ini/Collection.h ini/INIFile.h ini/Property.h ini/StreamTypes.h
    locking/CorvaTools.h locking/UserLockTypes.h
    packager/ObjectPackager.h
    registry/RegUtil.h registry/RegValue.h registry/RegistryEnumerations.h
    viewprops/ViewProperties.h viewprops/ViewProperty.h
    frame/Component.h frame/InterfaceIdentifiers.h frame/Messages.h frame/Resource.h frame/Restricted.h
    automation/Array.h automation/ClassDescription.h automation/ClassInfo.h automation/Convert.h automation/Dictionary.h
    automation/Enumeration.h automation/EventSource.h automation/Object.h automation/OrderedCollection.h
    automation/Record.h automation/Variant.h
    base/Ascii.h base/Dates.h base/Error.h base/Export.h base/Guid.h base/String.h)
if(NOT WIN32)
  list(APPEND VLGS_PUBLIC_HEADERS capi/vlgs.h)
endif()

set(VLGS_INCLUDE_DIR ${PROJECT_BINARY_DIR}/include)
set(VLGS_HEADERS_STAMP ${VLGS_INCLUDE_DIR}/gathered)
list(TRANSFORM VLGS_PUBLIC_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/src/ OUTPUT_VARIABLE VLGS_HEADER_SOURCES)
string(REPLACE ";" "," VLGS_HEADER_LIST "${VLGS_PUBLIC_HEADERS}")
add_custom_command(OUTPUT ${VLGS_HEADERS_STAMP}
  DEPENDS ${VLGS_HEADER_SOURCES} ${PROJECT_SOURCE_DIR}/cmake/GatherHeaders.cmake ${CMAKE_CURRENT_LIST_FILE}
  COMMAND ${CMAKE_COMMAND} -D HEADERS=${VLGS_HEADER_LIST} -D FROM=${PROJECT_SOURCE_DIR}/src
          -D TO=${VLGS_INCLUDE_DIR}/VlGeneralServices -P ${PROJECT_SOURCE_DIR}/cmake/GatherHeaders.cmake
  COMMAND ${CMAKE_COMMAND} -E touch ${VLGS_HEADERS_STAMP}
  COMMENT "Gathering the public headers" VERBATIM)
add_custom_target(vlgs_headers DEPENDS ${VLGS_HEADERS_STAMP})
