# cpack in a build folder packs what cmake --install would install: for Windows a ZIP, else a tarball and, where
# Debian's tools are, packages of Debian, one for each component. What has to be built before: lorv_installed.
#
#   cmake --build --preset linux-release --target lorv_installed && cpack --config build/linux-release/CPackConfig.cmake
install(FILES README.md CHANGELOG.md NOTICE.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT tool)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT tool FILES_MATCHING PATTERN "*.md"
        PATTERN "*.png" PATTERN "*.svg")
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT tool)
if(WIN32)
  # Beside bin/, where somebody who opens the ZIP looks first.
  install(FILES cmake/windows/start.html DESTINATION . COMPONENT tool)
endif()

set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# A package must name an address. Until its maker gives one, it is of the domain that is reserved for examples: mail to it
# reaches nobody, and no stranger, and the name says so.
set(LORV_CONTACT "Maintainers of Comm_LORV - no address set <nobody@comm-lorv.example>" CACHE STRING
    "Who answers for the packages")
set(CPACK_PACKAGE_CONTACT ${LORV_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Support library of a quantity take-off suite, with its command-line tool")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packs)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
# A test tree has much more than what is installed: nothing of it is built for the sake of packing.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
  find_program(LORV_SHLIBDEPS dpkg-shlibdeps)
  if(LORV_SHLIBDEPS)
    list(APPEND CPACK_GENERATOR DEB)
    include(LorvDebian)
  endif()
endif()
include(CPack)
