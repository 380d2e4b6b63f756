# SPDX-License-Identifier: MIT
# The installed tree: bin (vlgs; on Windows the server, the message texts and the manifest), lib (library, CMake package,
# pkg-config file), include/VlGeneralServices (the public headers), share (the manual page, completion for shells),
# share/VlGeneralServices (message texts; on Windows the type library and its source). What a package takes is named by
# the components Library, Texts, Development, Python and Command; the licences, which each kind of package keeps in a
# place of its own, by Licences.
include(CMakePackageConfigHelpers)

set(VLGS_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VlGeneralServices)
install(TARGETS ${VLGS_LINKED_LIBRARY} EXPORT VlGeneralServicesTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Library NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
install(EXPORT VlGeneralServicesTargets NAMESPACE VlGeneralServices:: DESTINATION ${VLGS_PACKAGE_DIR}
  COMPONENT Development)
configure_package_config_file(cmake/VlGeneralServicesConfig.cmake.in VlGeneralServicesConfig.cmake
  INSTALL_DESTINATION ${VLGS_PACKAGE_DIR})
write_basic_package_version_file(VlGeneralServicesConfigVersion.cmake VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServicesConfig.cmake
              ${PROJECT_BINARY_DIR}/VlGeneralServicesConfigVersion.cmake
  DESTINATION ${VLGS_PACKAGE_DIR} COMPONENT Development)
install(DIRECTORY ${VLGS_INCLUDE_DIR}/VlGeneralServices DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
install(DIRECTORY resources DESTINATION ${CMAKE_INSTALL_DATADIR}/VlGeneralServices COMPONENT Texts
  FILES_MATCHING PATTERN "*.txt")
install(FILES LICENSE docs/licences/unicode.txt DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/VlGeneralServices
  COMPONENT Licences)

if(NOT WIN32)
  file(RELATIVE_PATH VLGS_PREFIX_OF_PKGCONFIG
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  configure_file(cmake/VlGeneralServices.pc.in VlGeneralServices.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServices.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT Development)
else()
  if(NOT VLGS_LINKED_LIBRARY STREQUAL "VlGeneralServices") # the server is one in any case
    install(TARGETS VlGeneralServices RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Library
                                      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
  endif()
  install(FILES ${VLGS_TEXTS_DLL} ${PROJECT_BINARY_DIR}/bin/VlGeneralServices.manifest
    DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Library)
  install(FILES ${VLGS_TLB} ${VLGS_IDL} DESTINATION ${CMAKE_INSTALL_DATADIR}/VlGeneralServices/typelib
    COMPONENT Development)
  install(FILES ${VLGS_HEADER} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VlGeneralServices COMPONENT Development)
endif()

if(TARGET vlgs)
  install(TARGETS vlgs RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Command)
  if(TARGET vlgs_manual) # not there when only other targets were built
    install(FILES ${VLGS_MANUAL} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Command OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.bash RENAME vlgs
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Command OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.zsh RENAME _vlgs
      DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT Command OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.fish RENAME vlgs.fish
      DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT Command OPTIONAL)
  endif()
endif()
