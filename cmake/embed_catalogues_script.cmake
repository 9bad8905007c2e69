# Writes OUTPUT, a C++ source with the compiled catalogues FILES in it; each file's name says its language.
set(arrays "")
set(entries "")
foreach(file IN LISTS FILES)
    get_filename_component(language ${file} NAME_WE)
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "constexpr unsigned char k_${language}[] = {${bytes}};\n")
    string(APPEND entries "    Catalogue{\"${language}\", k_${language}},\n")
endforeach()
file(WRITE ${OUTPUT} "// Made while building from the catalogues in po/.
#include \"texts/catalogue.h\"

namespace embedded_host::texts
{

namespace
{

${arrays}
constexpr Catalogue kCatalogues[] = {
${entries}};

} // namespace

std::span<const Catalogue> catalogues() { return kCatalogues; }

} // namespace embedded_host::texts
")
