# Tests of the documents that other programs read. What lacks its tools is skipped by name. The interpreter is the one that Debian's packages belong to.
if(CMAKE_CROSSCOMPILING OR NOT EXISTS /usr/bin/python3)
    return()
endif()

add_test(NAME format-documents COMMAND ${CMAKE_CURRENT_LIST_DIR}/documents.py
    $<TARGET_FILE:zorpsysinfosmbios2> ${PROJECT_SOURCE_DIR}/docs
    ${CMAKE_BINARY_DIR}/share ${PROJECT_SOURCE_DIR}/../shared/tables)
set_tests_properties(format-documents PROPERTIES SKIP_RETURN_CODE 77)
