# What the history is made with: the targets sqlite and xxhash, and embed_sql(SOURCE FILE...), which writes one C++ source
# that holds the files.
add_library(xxhash INTERFACE)
if(CMAKE_CROSSCOMPILING)
    # One header that serves every target; taken out of its folder as in HeaderOnlyDependencies.cmake.
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/xxhash)
    file(CREATE_LINK /usr/include/xxhash.h ${CMAKE_BINARY_DIR}/xxhash/xxhash.h SYMBOLIC)
    set(ZORP_XXHASH ${CMAKE_BINARY_DIR}/xxhash)
else()
    find_path(ZORP_XXHASH xxhash.h REQUIRED)
endif()
target_include_directories(xxhash SYSTEM INTERFACE ${ZORP_XXHASH})

if(CMAKE_CROSSCOMPILING)
    # Debian has no SQLite for other systems: its one source, from an npm package that carries it as it is.
    set(package better-sqlite3-12.4.1.tgz)
    set(checksum 14398acbf00d1e8fe0a2753df7d4f15c13138e4b874f4e6e96791f65b4536d0d)
    set(folder ${CMAKE_BINARY_DIR}/sqlite)
    set(amalgamation ${folder}/package/deps/sqlite3)
    if(NOT EXISTS ${amalgamation}/sqlite3.c)
        find_program(ZORP_NPM npm REQUIRED)
        file(MAKE_DIRECTORY ${folder})
        execute_process(COMMAND ${ZORP_NPM} pack --silent better-sqlite3@12.4.1
            WORKING_DIRECTORY ${folder} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
        file(SHA256 ${folder}/${package} found)
        if(NOT found STREQUAL checksum)
            message(FATAL_ERROR "${package} is not the one that is known: its SHA-256 is ${found}")
        endif()
        file(ARCHIVE_EXTRACT INPUT ${folder}/${package} DESTINATION ${folder} PATTERNS package/deps/sqlite3/*)
    endif()
    enable_language(C)
    add_library(sqlite STATIC ${amalgamation}/sqlite3.c)
    target_include_directories(sqlite SYSTEM PUBLIC ${amalgamation})
    # As Debian compiles it, as far as the history needs it.
    target_compile_definitions(sqlite PRIVATE SQLITE_SECURE_DELETE SQLITE_THREADSAFE=0 SQLITE_OMIT_LOAD_EXTENSION)
elseif(ZORP_STATIC)
    add_library(sqlite INTERFACE)
    # CMake's own module would find the shared one.
    find_path(ZORP_SQLITE_HEADERS sqlite3.h REQUIRED)
    find_library(ZORP_SQLITE libsqlite3.a REQUIRED)
    target_include_directories(sqlite SYSTEM INTERFACE ${ZORP_SQLITE_HEADERS})
    target_link_libraries(sqlite INTERFACE ${ZORP_SQLITE} m ${CMAKE_DL_LIBS})
else()
    add_library(sqlite INTERFACE)
    find_package(SQLite3 3.40 REQUIRED)
    target_link_libraries(sqlite INTERFACE SQLite::SQLite3)
endif()

function(embed_sql source)
    set(files ${ARGN})
    list(TRANSFORM files PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    add_custom_command(OUTPUT ${source}
        COMMAND ${CMAKE_COMMAND} -D "FILES=${files}" -D OUTPUT=${source}
            -P ${PROJECT_SOURCE_DIR}/cmake/embed_sql_script.cmake
        DEPENDS ${files} ${PROJECT_SOURCE_DIR}/cmake/embed_sql_script.cmake
        VERBATIM)
endfunction()
