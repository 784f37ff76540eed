# Read by cpack: the dependencies of Debian's package. Those of the library and the tools are needed; those of the
# windows of Qt are recommended only, as the library is loaded at run time where windows are wanted.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

# lorv_dependencies(OUT FILE...): what these files need, as Debian's control file has it.
function(lorv_dependencies out)
  # The tool looks for the folder of a source package.
  set(folder ${CPACK_PACKAGE_DIRECTORY}/_CPack_Packages/dependencies)
  file(MAKE_DIRECTORY ${folder}/debian)
  file(WRITE ${folder}/debian/control "Source: comm-lorv\n\nPackage: comm-lorv\nArchitecture: any\n")
  # Our own library belongs to no package yet.
  execute_process(COMMAND ${CPACK_LORV_SHLIBDEPS} --ignore-missing-info -O -l${CPACK_LORV_BINARIES} ${ARGN}
                  WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE said ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  string(REPLACE "shlibs:Depends=" "" said "${said}")
  set(${out} "${said}" PARENT_SCOPE)
endfunction()

set(core ${CPACK_LORV_BINARIES}/libComm_LORV.so)
foreach(tool lorv lorv-desk)
  if(EXISTS ${CPACK_LORV_BINARIES}/${tool})
    list(APPEND core ${CPACK_LORV_BINARIES}/${tool})
  endif()
endforeach()
lorv_dependencies(CPACK_DEBIAN_PACKAGE_DEPENDS ${core})
if(EXISTS ${CPACK_LORV_BINARIES}/libComm_LORV_qt.so)
  lorv_dependencies(CPACK_DEBIAN_PACKAGE_RECOMMENDS ${CPACK_LORV_BINARIES}/libComm_LORV_qt.so)
  string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", fonts-wqy-microhei")
endif()
