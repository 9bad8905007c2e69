// Systems without a journal.
#include "journal.h"

#include <system_error>

namespace embedded_host::platform
{

void tellJournal(std::span<const std::pair<std::string_view, std::string>> /*fields*/)
{
    throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
}

} // namespace embedded_host::platform
