# Read by cpack once the files of all components stand in their folders: what Debian wants of files, and other packs do not.
# Manuals are compressed; nothing names a folder to look for libraries in, as all of them stand where the linker looks.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

file(GLOB_RECURSE files LIST_DIRECTORIES false ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*)
foreach(file IN LISTS files)
  if(IS_SYMLINK ${file})
    continue()
  endif()
  if(file MATCHES "/share/man/.*[.]1$")
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  elseif(file MATCHES "/usr/bin/[^/]*$")
    file(RPATH_REMOVE FILE ${file})
  elseif(file MATCHES "/usr/lib/.*[.]so[.][^/]*$")
    file(RPATH_REMOVE FILE ${file})
    # Programs may be run by all, libraries need not be.
    file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  endif()
endforeach()
