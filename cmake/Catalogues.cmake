# embed_catalogues(SOURCE LANGUAGE...): compiles po/LANGUAGE.po of each language and writes one C++ source that holds
# them all.
find_package(Gettext REQUIRED)

function(embed_catalogues source)
    set(compiled "")
    foreach(language IN LISTS ARGN)
        set(po ${PROJECT_SOURCE_DIR}/po/${language}.po)
        set(mo ${CMAKE_CURRENT_BINARY_DIR}/${language}.mo)
        add_custom_command(OUTPUT ${mo}
            COMMAND ${GETTEXT_MSGFMT_EXECUTABLE} --no-hash --endianness=little --output-file=${mo} ${po}
            DEPENDS ${po})
        list(APPEND compiled ${mo})
    endforeach()
    add_custom_command(OUTPUT ${source}
        COMMAND ${CMAKE_COMMAND} -D "FILES=${compiled}" -D OUTPUT=${source}
            -P ${PROJECT_SOURCE_DIR}/cmake/embed_catalogues_script.cmake
        DEPENDS ${compiled} ${PROJECT_SOURCE_DIR}/cmake/embed_catalogues_script.cmake
        VERBATIM)
endfunction()
