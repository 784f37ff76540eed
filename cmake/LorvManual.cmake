# What the tool prints about itself: its manual in both languages and the completion of its command lines. All of it comes from
# the text of --help, by the tool that was built, so it is made where that one runs.
if(WIN32 OR (CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR))
  return()
endif()

set(LORV_PRINTED ${PROJECT_BINARY_DIR}/printed)

# lorv_printed(FILE DESTINATION WORD...): what the tool prints for these words is installed as that file.
function(lorv_printed file destination)
  get_filename_component(folder ${LORV_PRINTED}/${file} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${LORV_PRINTED}/${file} COMMAND lorv ${ARGN} >${LORV_PRINTED}/${file} DEPENDS lorv)
  install(FILES ${LORV_PRINTED}/${file} DESTINATION ${destination} COMPONENT tool)
  set(LORV_PRINTED_FILES ${LORV_PRINTED_FILES} ${LORV_PRINTED}/${file} PARENT_SCOPE)
endfunction()

lorv_printed(man/lorv.1 ${CMAKE_INSTALL_MANDIR}/man1 --lang en manual)
lorv_printed(zh/lorv.1 ${CMAKE_INSTALL_MANDIR}/zh_CN/man1 --lang zh manual)
lorv_printed(bash/lorv ${CMAKE_INSTALL_DATADIR}/bash-completion/completions --lang en completion bash)
lorv_printed(zsh/_lorv ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions --lang en completion zsh)
lorv_printed(fish/lorv.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d --lang en completion fish)
add_custom_target(lorv_printed DEPENDS ${LORV_PRINTED_FILES})
add_dependencies(lorv_installed lorv_printed)
