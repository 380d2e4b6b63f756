# The installed tree: lib (library, CMake package, pkg-config file), include/VlGeneralServices (the public headers),
# bin/vlgs, share/VlGeneralServices (message texts).
include(CMakePackageConfigHelpers)

if(NOT WIN32)
  install(TARGETS VlGeneralServices EXPORT VlGeneralServicesTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT VlGeneralServicesTargets NAMESPACE VlGeneralServices::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VlGeneralServices)
  configure_package_config_file(cmake/VlGeneralServicesConfig.cmake.in VlGeneralServicesConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VlGeneralServices)
  write_basic_package_version_file(VlGeneralServicesConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServicesConfig.cmake
                ${PROJECT_BINARY_DIR}/VlGeneralServicesConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VlGeneralServices)
  file(RELATIVE_PATH VLGS_PREFIX_OF_PKGCONFIG
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  configure_file(cmake/VlGeneralServices.pc.in VlGeneralServices.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/VlGeneralServices.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  # Headers that only the rooms themselves need stay behind.
  install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VlGeneralServices
    FILES_MATCHING PATTERN "*.h"
    PATTERN "posix" EXCLUDE PATTERN "windows" EXCLUDE PATTERN "com" EXCLUDE)
endif()
install(DIRECTORY resources DESTINATION ${CMAKE_INSTALL_DATADIR}/VlGeneralServices FILES_MATCHING PATTERN "*.txt")
if(TARGET vlgs)
  install(TARGETS vlgs RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
