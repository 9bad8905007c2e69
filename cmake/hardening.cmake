# What finished programs defend themselves with against faults that nobody has found yet; debug and sanitizer builds
# have better means. tests/live/hardening.sh looks whether it arrived.
if(MSVC)
    target_compile_options(project_options INTERFACE $<$<CONFIG:Release>:/guard:cf>)
    target_link_options(project_options INTERFACE $<$<CONFIG:Release>:/guard:cf>)
    return()
endif()

target_compile_options(project_options INTERFACE
    $<$<CONFIG:Release>:-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>)
if(WIN32)
    # GCC has no control flow guard. Its runtime for the stack protector has to be linked by name.
    target_link_options(project_options INTERFACE
        $<$<CONFIG:Release>:-fstack-protector-strong -Wl,--dynamicbase,--high-entropy-va,--nxcompat>)
else()
    target_compile_options(project_options INTERFACE $<$<CONFIG:Release>:-fPIE>)
    target_link_options(project_options INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
        # Debian's libraries are compiled without it, so Linux does not enforce it for the program as a whole.
        target_compile_options(project_options INTERFACE $<$<CONFIG:Release>:-fcf-protection>)
    endif()
endif()
