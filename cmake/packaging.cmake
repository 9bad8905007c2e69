# What `cpack` makes: a zip file of the Windows programs, a Debian package of any other.
set(CPACK_PACKAGE_VENDOR "zorpsysinfosmbios2 developers")
set(CPACK_PACKAGE_CONTACT "zorpsysinfosmbios2 developers <zorpsysinfosmbios2@packages.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "inventory of a machine from its SMBIOS table")
set(CPACK_PACKAGE_DESCRIPTION
[[zorpsysinfosmbios2 reads the SMBIOS table of the machine's firmware, or one
that was saved before, and tells what the machine is made of: board,
processors, caches, memory, slots, batteries, power supplies and all else
that the firmware describes.

The structures of the table that describe the machine become devices with
named, typed properties, linked into a tree, printed as text for people or as
JSON for programs; of all others it tells that they are there.]])

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-windows-x86_64)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian.cmake)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
    set(CPACK_DEBIAN_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endif()
include(CPack)
