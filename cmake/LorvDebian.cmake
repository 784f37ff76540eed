# The packages of Debian, one for each component, with what its policy asks of each: a copyright file, a changelog, a
# description, dependencies read from the programs, the call of ldconfig as a trigger. `lintian` finds no error in them.
set(LORV_DEBIAN_NAMES library libcomm-lorv${PROJECT_VERSION_MAJOR} windows libcomm-lorv-qt${PROJECT_VERSION_MAJOR}
                      development libcomm-lorv-dev tool lorv desktop lorv-desk)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${LORV_BIN})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/finish.cmake)
set(CPACK_LORV_SHLIBDEPS ${LORV_SHLIBDEPS})

# lorv_debian(COMPONENT SECTION SUMMARY DESCRIPTION [DEPENDED_COMPONENT...])
function(lorv_debian component section summary description)
  list(FIND LORV_DEBIAN_NAMES ${component} at)
  math(EXPR at "${at} + 1")
  list(GET LORV_DEBIAN_NAMES ${at} package)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DEPENDS ${ARGN} PARENT_SCOPE)
  # With the name of the package in them, and in no other kind of pack.
  set(folder ${PROJECT_BINARY_DIR}/debian/${package})
  configure_file(cmake/debian/changelog.in ${folder}/changelog @ONLY)
  execute_process(COMMAND gzip -9nc ${folder}/changelog OUTPUT_FILE ${folder}/changelog.Debian.gz)
  install(FILES cmake/debian/copyright ${folder}/changelog.Debian.gz DESTINATION share/doc/${package}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
  set(LORV_COMPONENTS ${LORV_COMPONENTS} ${component} PARENT_SCOPE)
endfunction()

set(LORV_COMPONENTS "")
set(LORV_ABOUT "Comm_LORV serves a desktop suite for construction quantity take-off: formulas\nover texts, text and number \
helpers, tables, compression, images, windows.")
lorv_debian(library libs "support library of a quantity take-off suite"
            "${LORV_ABOUT}\n\nThis package has the shared library that programs of the suite are linked with.")
lorv_debian(development libdevel "support library of a quantity take-off suite - development files"
            "${LORV_ABOUT}\n\nThis package has what programs are built with: headers, a CMake package and a\npkg-config file."
            library)
if(TARGET lorv)
  lorv_debian(tool utils "quantities of building components from formulas"
              "A table of components and a few rules give the bill of quantities; single\nformulas are evaluated, checked and \
shortened. Archives, names and texts of the\nsuite are served as well. Messages are in English and Chinese.\n\nThis package \
has the command-line tool, its manual and examples.")
  set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS libedit2)
endif()
if(TARGET Comm_LORV_qt)
  lorv_debian(windows libs "support library of a quantity take-off suite - windows of Qt"
              "${LORV_ABOUT}\n\nThis package has the library that shows its windows through Qt 6. It is loaded\nat run time \
where windows are wanted." library)
  set(CPACK_DEBIAN_WINDOWS_PACKAGE_RECOMMENDS fonts-wqy-microhei)
  list(APPEND CPACK_COMPONENT_DEVELOPMENT_DEPENDS windows)
endif()
if(TARGET lorv-desk)
  lorv_debian(desktop utils "dialogs and windows of a quantity take-off suite to look at"
              "The dialogs of Comm_LORV with sample content in Chinese and English, on the\nscreen or as pictures.\n\nThis \
package has the example program." library)
  if(TARGET Comm_LORV_qt)
    list(APPEND CPACK_COMPONENT_DESKTOP_DEPENDS windows)
  endif()
endif()
set(CPACK_COMPONENTS_ALL ${LORV_COMPONENTS})
# A package with a shared library renews the linker's cache by a trigger, and names itself to other packages. (CPack's own
# way to do the latter adds scripts that call ldconfig as well.)
foreach(component LIBRARY WINDOWS)
  set(library libComm_LORV)
  if(component STREQUAL WINDOWS)
    set(library libComm_LORV_qt)
  endif()
  set(shlibs ${PROJECT_BINARY_DIR}/debian/${component}/shlibs)
  file(WRITE ${shlibs} "${library} ${PROJECT_VERSION_MAJOR} ${CPACK_DEBIAN_${component}_PACKAGE_NAME} (>= ${PROJECT_VERSION})\n")
  set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers ${shlibs})
endforeach()
