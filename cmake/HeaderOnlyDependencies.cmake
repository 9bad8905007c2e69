# The target header_only_dependencies: Boost, CLI11 and RapidJSON.
add_library(header_only_dependencies INTERFACE)
# Boost's exceptions would tell the path of the header that throws, which is another one on every machine.
target_compile_definitions(header_only_dependencies INTERFACE BOOST_DISABLE_CURRENT_LOCATION)

if(CMAKE_CROSSCOMPILING)
    # Debian's header-only packages serve every target, but the folder they lie in also holds the build machine's own C
    # library: take them out of it by links.
    set(headers ${CMAKE_BINARY_DIR}/header-only)
    file(MAKE_DIRECTORY ${headers})
    foreach(library boost CLI rapidjson)
        if(NOT IS_DIRECTORY /usr/include/${library})
            message(FATAL_ERROR "/usr/include/${library} is missing: install the packages named in the README")
        endif()
        file(CREATE_LINK /usr/include/${library} ${headers}/${library} SYMBOLIC)
    endforeach()
    target_include_directories(header_only_dependencies SYSTEM INTERFACE ${headers})
else()
    find_package(Boost 1.81 REQUIRED)
    find_package(CLI11 2.1 REQUIRED CONFIG)
    find_package(RapidJSON 1.1 REQUIRED CONFIG)
    # RapidJSON's package names its folder in either spelling.
    target_include_directories(header_only_dependencies SYSTEM INTERFACE
        ${RapidJSON_INCLUDE_DIRS} ${RAPIDJSON_INCLUDE_DIRS})
    target_link_libraries(header_only_dependencies INTERFACE Boost::headers CLI11::CLI11)
endif()
