# cmake --install: the library, its headers, the tool, a CMake package and a pkg-config file. The installed
# folder may be moved: nothing in it names the place it was made in. Each file belongs to a component, of which packages are
# made: library, windows (those of Qt), development, tool, desktop.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(LORV_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/Comm_LORV)
set(LORV_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Comm_LORV)

install(TARGETS Comm_LORV EXPORT Comm_LORVTargets RUNTIME COMPONENT library
        LIBRARY COMPONENT library NAMELINK_COMPONENT development ARCHIVE COMPONENT development)
# What has to be built before: lorv_installed.
add_custom_target(lorv_installed DEPENDS Comm_LORV)
if(TARGET lorv)
  install(TARGETS lorv COMPONENT tool)
  add_dependencies(lorv_installed lorv)
  include(LorvManual)
endif()
if(TARGET lorv-desk)
  install(TARGETS lorv-desk COMPONENT desktop)
  add_dependencies(lorv_installed lorv-desk)
  if(NOT WIN32)
    install(FILES tools/lorv-desk/lorv-desk.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT desktop)
  endif()
endif()
if(TARGET Comm_LORV_qt)
  # Beside the core, where that one looks for it first; a program that links it finds the core there.
  set_target_properties(Comm_LORV_qt PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS Comm_LORV_qt EXPORT Comm_LORVTargets LIBRARY COMPONENT windows NAMELINK_COMPONENT development)
  add_dependencies(lorv_installed Comm_LORV_qt)
endif()

if(TARGET Comm_LORV_office)
  # Beside the core, too. It finds the office where that was when it was built, so no package of Debian has it.
  install(TARGETS Comm_LORV_office LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT office)
  add_dependencies(lorv_installed Comm_LORV_office)
endif()

# Headers keep their folders: callers write #include "TEXPRESSCAL/express.h".
file(STRINGS cmake/public_headers.txt LORV_PUBLIC_HEADERS REGEX "^[^#]")
set(LORV_OTHER_SYSTEM win32)
if(WIN32)
  set(LORV_OTHER_SYSTEM posix)
endif()

# lorv_reached_headers(OUT HEADER...): these and all headers of the tree that they include in turn.
function(lorv_reached_headers out)
  set(waiting ${ARGN})
  set(reached "")
  while(waiting)
    list(POP_FRONT waiting header)
    if(NOT header IN_LIST reached AND NOT header MATCHES "/${LORV_OTHER_SYSTEM}/")
      list(APPEND reached ${header})
      file(STRINGS ${PROJECT_SOURCE_DIR}/${header} lines REGEX "^ *#include \"")
      list(TRANSFORM lines REPLACE "^ *#include \"([^\"]+)\".*" "\\1")
      list(APPEND waiting ${lines})
    endif()
  endwhile()
  set(${out} ${reached} PARENT_SCOPE)
endfunction()

if(NOT TARGET Comm_LORV_qt)
  list(FILTER LORV_PUBLIC_HEADERS EXCLUDE REGEX "/qt/")
endif()
lorv_reached_headers(LORV_INSTALLED_HEADERS ${LORV_PUBLIC_HEADERS})
foreach(header IN LISTS LORV_INSTALLED_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${LORV_INCLUDEDIR}/${folder}
          COMPONENT development)
endforeach()

install(EXPORT Comm_LORVTargets NAMESPACE Comm_LORV:: DESTINATION ${LORV_PACKAGE_DIR}
        COMPONENT development)
configure_package_config_file(cmake/Comm_LORVConfig.cmake.in Comm_LORVConfig.cmake
                              INSTALL_DESTINATION ${LORV_PACKAGE_DIR})
write_basic_package_version_file(Comm_LORVConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORVConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORVConfigVersion.cmake DESTINATION ${LORV_PACKAGE_DIR}
        COMPONENT development)

# From the folder of the pkg-config file up to the prefix, however deep the library folder is.
string(REGEX REPLACE "[^/]+" ".." LORV_PKGCONFIG_UP ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(LORV_PKGCONFIG_FLAGS "")
set(LORV_PKGCONFIG_LIBS "-L\${libdir} -lComm_LORV")
if(WIN32)
  # By its file: under -static the linker does not look for import libraries.
  # The classes for texts and values of automation call the system's library from their headers.
  set(LORV_PKGCONFIG_LIBS "\${libdir}/libComm_LORV.dll.a -loleaut32")
  set(LORV_PKGCONFIG_FLAGS "-DUNICODE -D_UNICODE")
endif()
configure_file(cmake/Comm_LORV.pc.in Comm_LORV.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Comm_LORV.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)
