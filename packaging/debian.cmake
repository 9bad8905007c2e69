# Makes of what is installed a package as Debian's policy wants it; CPack runs this before it packs.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(documents ${share}/doc/${CPACK_PACKAGE_NAME})

# Debian's zsh looks for packages' completions here.
file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)

file(MAKE_DIRECTORY ${share}/lintian/overrides)
file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/lintian-overrides ${share}/lintian/overrides/${CPACK_PACKAGE_NAME})

file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/changelog ${documents}/changelog.Debian)
execute_process(
    COMMAND chmod 644 ${share}/lintian/overrides/${CPACK_PACKAGE_NAME} ${documents}/changelog.Debian
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB programs ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/*)
file(GLOB pages ${share}/man/man1/*)
execute_process(
    COMMAND strip --remove-section=.comment --remove-section=.note ${programs}
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(
    COMMAND gzip -9n ${documents}/changelog ${documents}/changelog.Debian ${pages}
    COMMAND_ERROR_IS_FATAL ANY)
