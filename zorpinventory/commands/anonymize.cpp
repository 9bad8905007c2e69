// zorpinventory anonymize
#include "commands.h"

#include "anonymize/anonymize.h"
#include "document/problem.h"
#include "platform/files.h"

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Option;
using embedded_host::platform::pathFromUtf8;
using embedded_host::services::message;
using embedded_host::services::translatable;

constexpr Option kKey{.names = "--key",
                      .value = "FILE",
                      .says = translatable("with the same key, equal secrets of several tables become equal"),
                      .completes = commandline::Completes::Files};
constexpr Option kKeepOem{.names = "--keep-oem",
                          .says = translatable("keep what makers' own structures hold, but for the secrets in it")};
constexpr Option kForce{.names = "--force", .says = translatable("replace OUT when it is a dump")};
constexpr Option kOptions[] = {kKey, kKeepOem, kForce, commandline::kLanguage};

anonymize::Bytes keyIn(const std::string& file)
{
    constexpr std::size_t kLargestKey = 0x100000;
    const auto path = pathFromUtf8(file);
    try {
        auto key = embedded_host::platform::readFile(path, kLargestKey);
        if (key.empty())
            throw Problem(message("the key %1 is empty; write at least 16 random bytes to it", file));
        if (embedded_host::platform::othersMayRead(path))
            throw Problem(message("the key %1 may be read by others, who could find out secrets by trying; "
                                  "let only its owner read it",
                                  file));
        return key;
    } catch (const std::system_error& error) {
        throw Problem(message("cannot read the key %1: %2", file, embedded_host::services::reason(error)));
    }
}

/// Nothing is read for what could not be written.
void lookAtOutput(const std::string& table, const std::string& out, bool force)
{
    const auto to = pathFromUtf8(out);
    const auto from = pathFromUtf8(table);
    std::error_code ignored;
    for (const auto& source : {from, from / "DMI", from / "smbios_entry_point"})
        if (equivalent(source, to, ignored))
            throw Problem(message("%1 is the table itself; name another file for the copy", out));
    if (!force && exists(symlink_status(to, ignored)))
        throw Problem(message("%1 exists; name another file, or add --force if it is a dump to be replaced", out));
}

Exit run(const Arguments& arguments)
{
    const auto& table = arguments.sources.front();
    const auto& out = arguments.sources.back();
    const bool force = arguments.has(kForce.key());
    anonymize::Wishes wishes;
    wishes.keepMakers = arguments.has(kKeepOem.key());
    if (const auto key = arguments.value(kKey.key()))
        wishes.key = keyIn(*key);
    lookAtOutput(table, out, force);
    const auto made = anonymize::anonymized(pathFromUtf8(table), wishes);
    anonymize::write(made.dump, pathFromUtf8(out), force);

    const auto& replaced = made.replaced;
    note(message(
        "replaced: serial numbers and asset tags: %1, UUIDs: %2, numbers and dates of batteries: %3, OEM strings "
        "and options: %4, strings of makers' structures: %5, secrets found elsewhere: %6",
        replaced.serials, replaced.uuids, replaced.batteries, replaced.listed, replaced.makers, replaced.elsewhere));
    return Exit::Good;
}

} // namespace

const commandline::Command kAnonymize{.name = "anonymize",
                                      .says = translatable("a table that may be shown to others"),
                                      .sources = "TABLE OUT",
                                      .leastSources = 2,
                                      .mostSources = 2,
                                      .options = kOptions,
                                      .good = translatable("the copy was written"),
                                      .otherwise = "",
                                      .run = run};

} // namespace zorpinventory::commands
