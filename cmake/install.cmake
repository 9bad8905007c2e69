# What `cmake --install` puts where: folders by GNU's rules; on Windows one folder with the programs on top.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    # The program cannot run here, but on every system it prints the same catalogue.
    set(ZORP_CATALOGUE "" CACHE FILEPATH "The property catalogue as JSON, made by a build for this machine")
else()
    set(ZORP_CATALOGUE ${CMAKE_BINARY_DIR}/share/catalogue.json)
    add_custom_command(OUTPUT ${ZORP_CATALOGUE}
        COMMAND zorpsysinfosmbios2 --catalogue -f json -o ${ZORP_CATALOGUE}
        DEPENDS zorpsysinfosmbios2)
    add_custom_target(catalogue ALL DEPENDS ${ZORP_CATALOGUE})
endif()

if(WIN32)
    set(program_folder .)
    set(documents_folder .)
    set(data_folder .)
    install(FILES packaging/copyright RENAME copyright.txt DESTINATION .)
else()
    include(GNUInstallDirs)
    set(program_folder ${CMAKE_INSTALL_BINDIR})
    set(documents_folder ${CMAKE_INSTALL_DOCDIR})
    set(data_folder ${CMAKE_INSTALL_DATADIR}/${PROJECT_NAME})

    install(FILES packaging/copyright DESTINATION ${documents_folder})
    install(FILES man/zorpsysinfosmbios2.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES completions/zorpsysinfosmbios2.bash RENAME zorpsysinfosmbios2
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES man/zorpinventory.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${CMAKE_BINARY_DIR}/completions/zorpinventory.bash RENAME zorpinventory
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${CMAKE_BINARY_DIR}/completions/_zorpinventory DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${CMAKE_BINARY_DIR}/completions/zorpinventory.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        # For whoever enables them.
        install(FILES packaging/systemd/zorpinventory-record.service packaging/systemd/zorpinventory-record.timer
            DESTINATION lib/systemd/system)
    endif()
    install(FILES completions/_zorpsysinfosmbios2 DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES completions/zorpsysinfosmbios2.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

foreach(program zorpsysinfosmbios2 zorpinventory)
    if(TARGET ${program})
        install(TARGETS ${program} DESTINATION ${program_folder})
    endif()
endforeach()
# The repository's own README speaks of much that is not installed.
install(FILES packaging/README.md CHANGELOG.md
    docs/inventory-format.md docs/catalogue.schema.json docs/inventory.schema.json
    DESTINATION ${documents_folder})
install(FILES ${ZORP_CATALOGUE} DESTINATION ${data_folder} OPTIONAL)
