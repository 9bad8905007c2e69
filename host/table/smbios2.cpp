// The table library's one table: where it comes from and what is told of it.
#include "smbios2.h"

#include "firmware.h"
#include "library.h"
#include "services/logging.h"
#include "services/messages.h"
#include "services/shared_memory.h"
#include "table_error.h"

namespace embedded_host::table
{

namespace
{

void report(int priority, const std::string& message) { services::log(priority, "Smbios2", message); }

void warn(const std::string& message) { report(services::kWarning, message); }

struct Library
{
    std::shared_ptr<Image> image;
    bool current = false;                    ///< the image was read for the discovery under way
    bool fromFile = false;                   ///< and it came from a file
    std::unique_ptr<FirmwareTable> firmware; ///< found by isPresent, read by populateTable
    const void* visited = nullptr;           ///< the structure that was handed out last
    Faults faults;                           ///< of the image and its sources
    std::string failure;                     ///< why there is no table

    /// No table is in memory any more.
    void drop(std::string why)
    {
        image.reset();
        current = false;
        visited = nullptr;
        failure = std::move(why);
    }

    void take(RawTable raw, bool isFromFile)
    {
        drop({});
        image = std::make_shared<Image>(std::move(raw), faults);
        services::shareMemory(image->memory(), image);
        current = true;
        fromFile = isFromFile;
    }

    /// Looks for the firmware's table anew.
    void find()
    {
        firmware.reset();
        faults.restart(warn);
        firmware = findFirmwareTable(faults);
    }
};

Library& library()
{
    static Library instance;
    return instance;
}

/// The version of the table that this discovery reads; none before there is one.
std::optional<Version> currentVersion()
{
    if (!library().current && library().firmware)
        return library().firmware->version();
    if (library().image)
        return library().image->version();
    return std::nullopt;
}

} // namespace

void beginDiscovery()
{
    library().current = false;
    library().visited = nullptr;
    library().firmware.reset();
    library().faults.restart(nullptr);
}

void noteDevice()
{
    if (library().visited != nullptr)
        library().image->markDevice(*library().image->offsetOf(library().visited));
}

StringSet* stringsInMemory(const libsmbios2::type_hdr* structure)
{
    return library().image ? library().image->strings(structure) : nullptr;
}

void noteMissingString(const void* structure, unsigned char number)
{
    const auto& image = library().image;
    if (const auto offset = image ? image->offsetOf(structure) : std::nullopt)
        library().faults.addMissingString(image->place(*offset), number);
}

void noteUnrealisticSize(unsigned exponent, unsigned message)
{
    if (library().visited == nullptr)
        return;
    const auto& image = *library().image;
    const auto place = image.place(*image.offsetOf(library().visited));
    library().faults.add({FaultKind::SizeUnrealistic, true, place.handle, place.offset, exponent, message});
}

std::optional<Summary> summary()
{
    if (!library().current)
        return std::nullopt;
    const auto& image = *library().image;
    return Summary{library().fromFile, image.version().text(), image.length(), image.structures()};
}

std::vector<StructurePlace> structuresWithoutDevice()
{
    return library().current ? library().image->withoutDevice() : std::vector<StructurePlace>();
}

const std::string& failure() { return library().failure; }

const Faults& faults() { return library().faults; }

} // namespace embedded_host::table

namespace libsmbios2_internal
{

using namespace embedded_host;
using namespace libsmbios2;

Smbios2& Smbios2::instance()
{
    static Smbios2 only;
    return only;
}

int Smbios2::isPresent()
{
    auto& library = table::library();
    if (library.current)
        return 1;
    try {
        library.find();
        return 1;
    } catch (const table::TableError& error) {
        table::report(services::kError, services::message("no SMBIOS table: %1", error.what()));
        return 0;
    }
}

POPULATE_TABLE_RESULT Smbios2::populateTable(bool refresh)
{
    auto& library = table::library();
    if (library.current && (library.fromFile || !refresh))
        return POPULATE_TABLE_IN_MEMORY;
    try {
        if (refresh || !library.firmware)
            library.find();
        library.take(library.firmware->read(library.faults), false);
        return POPULATE_TABLE_READ;
    } catch (const table::TableError& error) {
        library.drop(error.what());
        table::report(services::kError, services::message("cannot read the SMBIOS table: %1", error.what()));
        errno = error.error();
        return error.result();
    }
}

bool Smbios2::loadTableFromFile(const lum::String& path, bool log)
{
    auto& library = table::library();
    library.drop({});
    library.faults.restart(log ? table::warn : table::Faults::Log());
    try {
        library.take(table::readTableFile(platform::pathFromUtf8(path.bytes()), library.faults), true);
    } catch (const std::runtime_error& error) {
        library.drop(error.what());
        table::report(services::kError, error.what());
    }
    return library.current;
}

bool Smbios2::saveTableToFile(const lum::String& path)
{
    const auto& image = table::library().image;
    const int error = errno; // populateTable's, which whoever saves in between may still tell
    bool saved = false;
    try {
        if (!image)
            throw std::runtime_error(services::message("%1: not written, there is no table in memory", path.bytes()));
        table::writeDump(image->dump(), platform::pathFromUtf8(path.bytes()), table::Replaces::Dumps,
                         platform::Readers::Owner);
        saved = true;
    } catch (const std::runtime_error& failure) {
        table::report(services::kError, failure.what());
    }
    errno = error;
    return saved;
}

int Smbios2::readStructure(unsigned char type, const void** out, unsigned int index)
{
    const auto& image = table::library().image;
    const auto* structure = image ? image->find(type, index) : nullptr;
    table::library().visited = structure;
    if (structure == nullptr)
        return 1;
    *out = structure;
    return 0;
}

unsigned int Smbios2::getVersion() const
{
    const auto version = table::currentVersion();
    return version ? version->number() : 0;
}

lum::String Smbios2::getVersionString() const
{
    const auto version = table::currentVersion();
    return version ? lum::String(version->text()) : lum::String();
}

} // namespace libsmbios2_internal
