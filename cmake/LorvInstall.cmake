# cmake --install: the library, its headers, the tool, a CMake package and a pkg-config file. The installed
# folder may be moved: nothing in it names the place it was made in.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(LORV_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/Comm_LORV)
set(LORV_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Comm_LORV)

add_library(Comm_LORV::Comm_LORV ALIAS Comm_LORV)
target_compile_features(Comm_LORV INTERFACE cxx_std_20)
install(TARGETS Comm_LORV EXPORT Comm_LORVTargets)
# What has to be built before: lorv_installed.
add_custom_target(lorv_installed DEPENDS Comm_LORV)
foreach(tool lorv lorv-desk)
  if(TARGET ${tool})
    install(TARGETS ${tool})
    add_dependencies(lorv_installed ${tool})
  endif()
endforeach()
if(TARGET Comm_LORV_qt)
  # Beside the core, where that one looks for it first; a program that links it finds the core there.
  set_target_properties(Comm_LORV_qt PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS Comm_LORV_qt EXPORT Comm_LORVTargets)
  install(FILES platform/qt/desktop/qt_desktop.h DESTINATION ${LORV_INCLUDEDIR}/platform/qt/desktop)
  add_library(Comm_LORV::Comm_LORV_qt ALIAS Comm_LORV_qt)
  add_dependencies(lorv_installed Comm_LORV_qt)
endif()

# Headers keep their folders: callers write #include "TEXPRESSCAL/express.h".
set(LORV_OTHER_SYSTEM win32)
if(WIN32)
  set(LORV_OTHER_SYSTEM posix)
endif()
foreach(folder IN LISTS LORV_FOLDERS)
  install(DIRECTORY ${folder} DESTINATION ${LORV_INCLUDEDIR}
          FILES_MATCHING PATTERN "*.h" PATTERN "*_table.inc" PATTERN ${LORV_OTHER_SYSTEM} EXCLUDE PATTERN qt EXCLUDE)
endforeach()

install(EXPORT Comm_LORVTargets NAMESPACE Comm_LORV:: DESTINATION ${LORV_PACKAGE_DIR})
configure_package_config_file(cmake/Comm_LORVConfig.cmake.in Comm_LORVConfig.cmake
                              INSTALL_DESTINATION ${LORV_PACKAGE_DIR})
write_basic_package_version_file(Comm_LORVConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORVConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORVConfigVersion.cmake DESTINATION ${LORV_PACKAGE_DIR})

# From the folder of the pkg-config file up to the prefix, however deep the library folder is.
string(REGEX REPLACE "[^/]+" ".." LORV_PKGCONFIG_UP ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(LORV_PKGCONFIG_FLAGS "")
set(LORV_PKGCONFIG_LIBS "-L\${libdir} -lComm_LORV")
if(WIN32)
  # By its file: under -static the linker does not look for import libraries.
  set(LORV_PKGCONFIG_LIBS "\${libdir}/libComm_LORV.dll.a")
  set(LORV_PKGCONFIG_FLAGS "-DUNICODE -D_UNICODE")
endif()
configure_file(cmake/Comm_LORV.pc.in Comm_LORV.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORV.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
