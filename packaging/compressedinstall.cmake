# SPDX-License-Identifier: GPL-3.0-or-later
# Debian wants manual pages and the changelog compressed with gzip -9n: no
# name and no time stamp in the file, so the same sources make the same package.
find_program(ZEPHLANE_GZIP gzip REQUIRED)

# Compresses a file of the source tree at build time and installs the result.
function(zephlane_install_compressed source destination)
    get_filename_component(name ${source} NAME)
    set(copy ${PROJECT_BINARY_DIR}/compressed/${name})
    add_custom_command(OUTPUT ${copy}.gz
        COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/${source} ${copy}
        COMMAND ${ZEPHLANE_GZIP} -9nf ${copy}
        DEPENDS ${PROJECT_SOURCE_DIR}/${source}
        VERBATIM)
    add_custom_target(compress-${name} ALL DEPENDS ${copy}.gz)
    install(FILES ${copy}.gz DESTINATION ${destination})
endfunction()

# A manual page, installed in the section that its name ends in (page.1 in man1).
function(zephlane_install_manual_page page)
    string(REGEX MATCH "[^.]+$" section ${page})
    zephlane_install_compressed(${page} ${CMAKE_INSTALL_MANDIR}/man${section})
endfunction()
