# What the tool tells of itself: its manual in both languages and the completion of its command lines. All of it comes from
# the text of --help, by the tool that was built, so it is made where that one runs.
if(WIN32 OR (CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR))
  return()
endif()

set(LORV_TOLD ${PROJECT_BINARY_DIR}/told)

# lorv_told(FILE DESTINATION WORD...): what the tool prints for these words is installed as that file.
function(lorv_told file destination)
  get_filename_component(folder ${LORV_TOLD}/${file} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${LORV_TOLD}/${file} COMMAND lorv ${ARGN} >${LORV_TOLD}/${file} DEPENDS lorv)
  install(FILES ${LORV_TOLD}/${file} DESTINATION ${destination} COMPONENT tool)
  set(LORV_TOLD_FILES ${LORV_TOLD_FILES} ${LORV_TOLD}/${file} PARENT_SCOPE)
endfunction()

lorv_told(man/lorv.1 ${CMAKE_INSTALL_MANDIR}/man1 --lang en manual)
lorv_told(zh/lorv.1 ${CMAKE_INSTALL_MANDIR}/zh_CN/man1 --lang zh manual)
lorv_told(bash/lorv ${CMAKE_INSTALL_DATADIR}/bash-completion/completions --lang en completion bash)
lorv_told(zsh/_lorv ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions --lang en completion zsh)
lorv_told(fish/lorv.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d --lang en completion fish)
add_custom_target(lorv_told DEPENDS ${LORV_TOLD_FILES})
add_dependencies(lorv_installed lorv_told)
