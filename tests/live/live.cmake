# Tests of the program as it is handed out, against real surroundings: Wine, an emulated machine, dangerous file systems.
# What lacks its tools is skipped by name. The sanitizers' build is not what is handed out.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux" OR NOT CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64"
   OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    return()
endif()

set(release_program ${PROJECT_SOURCE_DIR}/build/release/bin/zorpsysinfosmbios2)
set(windows_program ${PROJECT_SOURCE_DIR}/build/windows/bin/zorpsysinfosmbios2.exe)
set(sample ${CMAKE_BINARY_DIR}/share/sample.dmi)

function(add_live_test name)
    add_test(NAME ${name} COMMAND ${ARGN})
    set_tests_properties(${name} PROPERTIES LABELS live SKIP_RETURN_CODE 77 TIMEOUT 300)
endfunction()

add_live_test(writes ${CMAKE_CURRENT_LIST_DIR}/writes.sh ${release_program} ${sample})

add_live_test(history ${CMAKE_CURRENT_LIST_DIR}/history.py
    ${PROJECT_SOURCE_DIR}/build/release/bin/zorpinventory ${sample})
set_tests_properties(history PROPERTIES TIMEOUT 1200) # hundreds of recordings, and a disk that syncs each

add_live_test(hardening ${CMAKE_CURRENT_LIST_DIR}/hardening.sh
    ${release_program} ${PROJECT_SOURCE_DIR}/build/release/bin/zorpinventory
    ${windows_program} ${PROJECT_SOURCE_DIR}/build/windows/bin/zorpinventory.exe)

add_live_test(manual ${CMAKE_CURRENT_LIST_DIR}/manual.sh
    ${PROJECT_SOURCE_DIR}/man/zorpsysinfosmbios2.1 $<TARGET_FILE:zorpsysinfosmbios2>
    ${PROJECT_SOURCE_DIR}/modules/src/multi/sysinfo/zorpsysinfosmbios2)
add_live_test(manual-zorpinventory ${CMAKE_CURRENT_LIST_DIR}/manual.sh ${PROJECT_SOURCE_DIR}/man/zorpinventory.1)

foreach(shell bash zsh fish)
    add_live_test(completions-${shell} ${CMAKE_CURRENT_LIST_DIR}/completions.py ${shell}
        $<TARGET_FILE:zorpsysinfosmbios2> ${PROJECT_SOURCE_DIR}/completions)
endforeach()

# Wine starts slowly and its cases share a prefix: one after the other.
foreach(case tables languages live blocks paths dlls lines large writes
        inventory inventory-sources inventory-faults)
    add_live_test(wine-${case} ${CMAKE_CURRENT_LIST_DIR}/wine.sh ${case}
        ${release_program} ${windows_program} ${sample} ${PROJECT_SOURCE_DIR}/../shared/tables)
    set_tests_properties(wine-${case} PROPERTIES RESOURCE_LOCK wine)
endforeach()

add_executable(guest-init ${CMAKE_CURRENT_LIST_DIR}/guest_init.cpp)
target_link_libraries(guest-init PRIVATE project_options)
target_link_options(guest-init PRIVATE -static -s)

foreach(case emulator-32 emulator-64 emulator-devmem-32 emulator-devmem-64 emulator-user)
    add_live_test(${case} ${CMAKE_CURRENT_LIST_DIR}/emulator.sh ${case}
        ${release_program} $<TARGET_FILE:guest-init> ${sample} ${CMAKE_BINARY_DIR}/live)
endforeach()
