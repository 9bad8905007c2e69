# Tests of the documents that other programs read, as docs/inventory-format.md promises them. What lacks its tools is
# skipped by name. The interpreter is the one that Debian's packages belong to.
if(CMAKE_CROSSCOMPILING OR NOT EXISTS /usr/bin/python3)
    return()
endif()

add_test(NAME format-documents COMMAND ${CMAKE_CURRENT_LIST_DIR}/documents.py
    $<TARGET_FILE:zorpsysinfosmbios2> ${PROJECT_SOURCE_DIR}/docs
    ${CMAKE_BINARY_DIR}/share ${PROJECT_SOURCE_DIR}/../shared/tables)
add_test(NAME format-examples COMMAND ${CMAKE_CURRENT_LIST_DIR}/examples.py
    $<TARGET_FILE:zorpsysinfosmbios2> ${PROJECT_SOURCE_DIR}/docs/inventory-format.md ${CMAKE_BINARY_DIR}/share)
add_test(NAME readme-examples COMMAND ${CMAKE_CURRENT_LIST_DIR}/examples.py
    $<TARGET_FILE:zorpsysinfosmbios2> ${PROJECT_SOURCE_DIR}/README.md ${CMAKE_BINARY_DIR}/share)
set_tests_properties(format-documents format-examples readme-examples PROPERTIES SKIP_RETURN_CODE 77)
