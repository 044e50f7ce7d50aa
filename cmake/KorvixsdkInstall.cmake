include(CMakePackageConfigHelpers)

install(
  TARGETS korvixsdk
  EXPORT korvixsdk
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/korvixsdk ${PROJECT_BINARY_DIR}/include/korvixsdk
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/SECURITY.md
              ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
              ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR}
        PATTERN Doxyfile EXCLUDE)
# With which hosts of the DLL are built on Linux.
install(FILES ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-x86_64.cmake
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/cmake)
# Each builds there by itself. Programs are named, as what a clone's files may differs from one
# machine to the next.
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  PATTERN .gitattributes EXCLUDE
  PATTERN service/run
  PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(MINGW)
  # libcurl is inside the DLL, and its licence goes where its code goes.
  find_file(KORVIXSDK_CURL_LICENCE COPYING PATHS ${CMAKE_PREFIX_PATH} NO_DEFAULT_PATH
            NO_CMAKE_FIND_ROOT_PATH)
  if(KORVIXSDK_CURL_LICENCE)
    install(FILES ${KORVIXSDK_CURL_LICENCE} DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME curl-COPYING)
  endif()
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/korvixsdk)
install(
  EXPORT korvixsdk
  NAMESPACE korvixsdk::
  FILE korvixsdk-targets.cmake
  DESTINATION ${package_folder})
include(${CMAKE_CURRENT_LIST_DIR}/korvixsdk-toolchain.cmake)
korvixsdk_toolchain(KORVIXSDK_TOOLCHAIN)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/korvixsdk-config.cmake.in
  ${PROJECT_BINARY_DIR}/korvixsdk-config.cmake INSTALL_DESTINATION ${package_folder})
# Pointers of another size are refused by the configuration file, which says why.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/korvixsdk-config-version.cmake
                                 COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/korvixsdk-config.cmake
              ${PROJECT_BINARY_DIR}/korvixsdk-config-version.cmake
              ${PROJECT_SOURCE_DIR}/cmake/korvixsdk-toolchain.cmake
        DESTINATION ${package_folder})

# The folder that holds the .pc file tells where everything else is, so that an installed tree may
# be moved.
file(RELATIVE_PATH KORVIXSDK_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
if(WIN32)
  set(KORVIXSDK_PC_LIBRARY KorvixSDK)
else()
  set(KORVIXSDK_PC_LIBRARY korvixsdk)
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/korvixsdk.pc.in ${PROJECT_BINARY_DIR}/korvixsdk.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/korvixsdk.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(PROJECT_IS_TOP_LEVEL)
  include(${CMAKE_CURRENT_LIST_DIR}/KorvixsdkPackage.cmake)
endif()
