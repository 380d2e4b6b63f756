# The installed tree: bin (vlgs; on Windows the server, the message texts and the manifest), lib (library, CMake package,
# pkg-config file), include/VlGeneralServices (the public headers), share (the manual page, completion for shells),
# share/VlGeneralServices (message texts; on Windows the type library and its source).
include(CMakePackageConfigHelpers)

set(VLGS_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VlGeneralServices)
install(TARGETS ${VLGS_LINKED_LIBRARY} EXPORT VlGeneralServicesTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT VlGeneralServicesTargets NAMESPACE VlGeneralServices:: DESTINATION ${VLGS_PACKAGE_DIR})
configure_package_config_file(cmake/VlGeneralServicesConfig.cmake.in VlGeneralServicesConfig.cmake
  INSTALL_DESTINATION ${VLGS_PACKAGE_DIR})
write_basic_package_version_file(VlGeneralServicesConfigVersion.cmake VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServicesConfig.cmake
              ${PROJECT_BINARY_DIR}/VlGeneralServicesConfigVersion.cmake
  DESTINATION ${VLGS_PACKAGE_DIR})
install(DIRECTORY ${VLGS_INCLUDE_DIR}/VlGeneralServices DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY resources DESTINATION ${CMAKE_INSTALL_DATADIR}/VlGeneralServices FILES_MATCHING PATTERN "*.txt")

if(NOT WIN32)
  file(RELATIVE_PATH VLGS_PREFIX_OF_PKGCONFIG
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  configure_file(cmake/VlGeneralServices.pc.in VlGeneralServices.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServices.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
else()
  if(NOT VLGS_LINKED_LIBRARY STREQUAL "VlGeneralServices") # the server is one in any case
    install(TARGETS VlGeneralServices RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
                                      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endif()
  install(FILES ${VLGS_TEXTS_DLL} ${PROJECT_BINARY_DIR}/bin/VlGeneralServices.manifest
    DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${VLGS_TLB} ${VLGS_IDL} DESTINATION ${CMAKE_INSTALL_DATADIR}/VlGeneralServices/typelib)
  install(FILES ${VLGS_HEADER} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VlGeneralServices)
endif()

if(TARGET vlgs)
  install(TARGETS vlgs RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(TARGET vlgs_manual) # not there when only other targets were built
    install(FILES ${VLGS_MANUAL} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.bash RENAME vlgs
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.zsh RENAME _vlgs
      DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions OPTIONAL)
    install(FILES ${PROJECT_BINARY_DIR}/share/completion.fish RENAME vlgs.fish
      DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d OPTIONAL)
  endif()
endif()
