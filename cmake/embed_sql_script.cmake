# Writes OUTPUT, a C++ source with the files FILES in it in their order.
set(steps "")
foreach(file IN LISTS FILES)
    file(READ ${file} text)
    string(APPEND steps "    R\"sql(${text})sql\",\n")
endforeach()
file(WRITE ${OUTPUT} "// Made while building from the files in migrations/.
#include \"migrations.h\"

namespace zorpinventory::history
{

namespace
{

constexpr const char* kSteps[] = {
${steps}};

} // namespace

std::span<const char* const> migrations() { return kSteps; }

} // namespace zorpinventory::history
")
