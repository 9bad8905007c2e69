# room(HOUSE NAME [SOURCES source...] [USES library...] [PRIVATELY library...]): the library HOUSE_NAME made of the folder
# NAME of a house. Its headers are seen as "NAME/header.h", and its sources see no headers but their own and those of
# what it uses: so the order of the rooms is kept by the compiler. A room without sources is nothing but headers.
function(room house name)
    cmake_parse_arguments(room "" "" "SOURCES;USES;PRIVATELY" ${ARGN})
    set(library ${house}_${name})
    list(TRANSFORM room_SOURCES PREPEND ${name}/)
    # A folder in which there is nothing but this room.
    set(door ${CMAKE_BINARY_DIR}/rooms/${library})
    file(MAKE_DIRECTORY ${door})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${name} ${door}/${name} RESULT failed SYMBOLIC)
    if(failed)
        # Some systems make links for administrators only: then all doors are open.
        set(door ${CMAKE_CURRENT_SOURCE_DIR})
    endif()
    if(room_SOURCES)
        add_library(${library} STATIC ${room_SOURCES})
        target_include_directories(${library} PUBLIC ${door})
        target_link_libraries(${library} PUBLIC ${room_USES} PRIVATE ${room_PRIVATELY} project_options)
    else()
        add_library(${library} INTERFACE)
        target_include_directories(${library} INTERFACE ${door})
        target_link_libraries(${library} INTERFACE ${room_USES})
    endif()
endfunction()
