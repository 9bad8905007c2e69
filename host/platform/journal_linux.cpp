// systemd's journal, which takes entries as datagrams; its library does not exist as a static one.
#include "journal.h"

#include "files.h"

#include <cerrno>
#include <cstdint>
#include <sys/socket.h>
#include <sys/un.h>

namespace embedded_host::platform
{

namespace
{

constexpr char kSocket[] = "/run/systemd/journal/socket";

/// More than any reader looks at, and less than any system's datagrams.
constexpr std::size_t kLongestValue = 0x8000;

/// A field as the journal takes values of any bytes: its name, the length as eight bytes from the lowest on, the value.
void append(std::string& entry, std::string_view name, std::string_view value)
{
    value = value.substr(0, kLongestValue);
    entry.append(name).append("\n");
    for (unsigned shift = 0; shift < 64; shift += 8)
        entry += static_cast<char>((std::uint64_t{value.size()} >> shift) & 0xFFU);
    entry.append(value).append("\n");
}

} // namespace

void tellJournal(std::span<const std::pair<std::string_view, std::string>> fields)
{
    std::string entry;
    for (const auto& [name, value] : fields)
        append(entry, name, value);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string_view(kSocket).copy(address.sun_path, sizeof address.sun_path - 1);
    const int opened = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const OpenFile closing(opened);
    if (opened < 0 || sendto(opened, entry.data(), entry.size(), MSG_NOSIGNAL, reinterpret_cast<sockaddr*>(&address),
                             sizeof address) < 0)
        throw std::system_error(errno, std::generic_category());
}

} // namespace embedded_host::platform
