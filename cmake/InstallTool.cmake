# Installs the quill tool, its manual page and its bash, zsh and fish
# completions (component "tool").

# The installed program finds the library beside it, under any prefix: its run
# path is the library folder relative to the program's folder. The program in
# the build tree keeps its absolute run path to the build's library.
file(RELATIVE_PATH _quill_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(quill_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${_quill_bin_to_lib}")
install(TARGETS quill_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)

# Manual pages are installed compressed, as man finds them on Debian. -n keeps
# the time stamp out of the archive so that the output is reproducible.
set(_quill_man_page ${PROJECT_BINARY_DIR}/man/quill.1.gz)
add_custom_command(OUTPUT ${_quill_man_page}
  COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/docs/quill.1 ${PROJECT_BINARY_DIR}/man/quill.1
  COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/man/quill.1
  DEPENDS ${PROJECT_SOURCE_DIR}/docs/quill.1
  VERBATIM)
add_custom_target(quill_man_page ALL DEPENDS ${_quill_man_page})
# Building just the tool is enough for installing it.
add_dependencies(quill_cli quill_man_page)
install(FILES ${_quill_man_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)

# Each shell looks for completions in its own folder, under its own file name.
set(_quill_completions ${PROJECT_SOURCE_DIR}/completions)
install(FILES ${_quill_completions}/quill.bash RENAME quill
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
install(FILES ${_quill_completions}/_quill
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tool)
install(FILES ${_quill_completions}/quill.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
