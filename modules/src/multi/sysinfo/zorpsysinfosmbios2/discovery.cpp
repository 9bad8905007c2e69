// The discovery driver: settings, table, root device, and the decoders in their order.
#include "discovery.h"

#include "catalogue.h"
#include "construction.h"
#include "decoders/decoders.h"
#include "logging.h"
#include "vocabulary/fields.h"

#include <cerrno>
#include <cstring>
#include <initializer_list>

namespace zorpsysinfosmbios2
{

using libsmbios2::Smbios2;
using libsmbios2::Smbios2_SysInfo;
using lum::LoggerStream;
using orb5::DeviceCapability;
using orb5::SysInfoDevice;
using orb5::Value;

namespace
{

struct Decoder
{
    void (*discover)();
    bool onlyIfVerbose;
};

constexpr bool kAlways = false;
constexpr bool kVerbose = true;

/// The standard types in ascending order.
constexpr Decoder kDecoders[] = {
    {DiscoverBIOS, kAlways},
    {DiscoverSystem, kAlways},
    {DiscoverBaseBoard, kAlways},
    {DiscoverEnclosure, kAlways},
    {DiscoverProcessors, kVerbose},
    {DiscoverMemoryController, kAlways},
    {DiscoverMemoryModule, kAlways},
    {DiscoverCache, kVerbose},
    {DiscoverPorts, kVerbose},
    {DiscoverSlots, kVerbose},
    {DiscoverOnBoardDevices, kVerbose},
    {DiscoverOEMStrings, kAlways},
    {DiscoverConfigOptions, kVerbose},
    {DiscoverBIOSLanguages, kAlways},
    {DiscoverGroup, kVerbose},
    {DiscoverSystemLog, kVerbose},
    {DiscoverMemoryArray, kAlways},
    {DiscoverMemoryDevice, kAlways},
    {Discover32bitMemoryError, kVerbose},
    {DiscoverMemoryArrayMappedAddress, kVerbose},
    {DiscoverMemoryDeviceMappedAddress, kVerbose},
    {DiscoverPointingDevice, kVerbose},
    {DiscoverBattery, kVerbose},
    {DiscoverSystemReset, kVerbose},
    {DiscoverHardwareSecurity, kAlways},
    {DiscoverVoltageProbe, kVerbose},
    {DiscoverCoolingDevice, kVerbose},
    {DiscoverTemperatureProbe, kVerbose},
    {DiscoverCurrentProbe, kVerbose},
    {DiscoverOutOfBandRemoteAccess, kVerbose},
    {DiscoverBootInformation, kVerbose},
    {Discover64bitMemoryError, kVerbose},
    {DiscoverManagementDevice, kVerbose},
    {DiscoverManagementDeviceComponent, kVerbose},
    {DiscoverDeviceInformation, kVerbose},
    {DiscoverPowerSupply, kVerbose},
    {DiscoverOnBoardDevicesExt, kVerbose},
};

/// Reads a boolean setting; one that is absent, or no boolean, leaves the flag as it is.
void readFlag(const char* name, bool& flag)
{
    lum::String text;
    if (getModuleSetting(name, text))
        lum::LumValue::getCorrectValue(text, lum::LumType(0), false).get(flag);
}

/// Reads a path setting; an empty one counts as absent.
bool readPath(const char* name, lum::String& path) { return getModuleSetting(name, path) && path.size() != 0; }

void publishRoot()
{
    constexpr unsigned kRootHandle = 0xFFFF; // no structure carries it
    const unsigned none = SysInfoDevice::NullIndex;
    auto* root = SysInfoDevice::createGeneric(DeviceCapability::SMBIOS(), DeviceCapability::SMBIOS(), "SMBIOS",
                                              "SMBIOS", "SMBIOS", "SMBIOS");
    root->addChildBusId(orb5::ChildBusType::SMBIOS(), none, none, none, none, none);
    root->addProperty(root_hdr_handle->setValue(
        Value(orb5::OrbDiscreteMeasurement(orb5::OrbUnitType::HEXADECIMAL16(), kRootHandle))));
    root->addProperty(smbios2_version->setValue(Value(Smbios2::instance().getVersionString())));
    orb5::SysInfoModule::addDevice(root);
}

/// Whether the first structure of the type names, in its string at 04h, one of these vendors. Case counts, and blank
/// strings are not filtered.
bool vendorIs(unsigned char type, std::initializer_list<const char*> names)
{
    const void* start = nullptr;
    if (Smbios2::instance().readStructure(type, &start, 0) != 0)
        return false;
    const Structure structure(start);
    const char* vendor = Smbios2_SysInfo::getString(structure.header(), structure[byte(0x04)]);
    if (vendor == nullptr)
        return false;
    for (const char* name : names)
        if (std::strstr(vendor, name) != nullptr)
            return true;
    return false;
}

} // namespace

void DiscoverSMBIOS()
{
    const lum::TraceLogger trace(loggerForTraces(), "DiscoverSMBIOS", kTracedSource, 2589);

    readFlag("FilterTrivialStrings", filterTrivialStrings);
    bool verbose = true;
    readFlag("verbose", verbose);

    bool tableFromPlatform = true;
    if (lum::String loadTablePath; readPath("LoadTable", loadTablePath)) {
        if (auto* logger = loggerFor(2))
            logger->log(2, LoggerStream() + "2601 " + "Loading SMBIOS table from file: " + loadTablePath);
        if (!Smbios2::instance().loadTableFromFile(loadTablePath, true)) {
            if (auto* logger = loggerFor(5))
                logger->log(5, LoggerStream() + "2603 " + "Could not load SMBIOS table from file: " + loadTablePath);
            return;
        }
        tableFromPlatform = false;
    }
    if (Smbios2::instance().isPresent() != 1)
        return;

    publishRoot();

    // Unsigned, so that a library's negative error code is a failure too.
    const auto populated = static_cast<unsigned>(Smbios2::instance().populateTable(false));
    if (lum::String saveTablePath; readPath("SaveTable", saveTablePath))
        Smbios2::instance().saveTableToFile(saveTablePath);

    // Deliberate: a table from a file is decoded whatever populating it said.
    if (tableFromPlatform && populated > unsigned{libsmbios2::POPULATE_TABLE_IN_MEMORY}) {
        if (auto* logger = loggerFor(3))
            logger->log(3, LoggerStream() + "2655 " + "Could not populate the libSmbios2 table: " + errno);
        return;
    }

    for (const auto& decoder : kDecoders)
        if (verbose || !decoder.onlyIfVerbose)
            decoder.discover();

    if (vendorIs(0, {"IBM", "LENOVO"}))
        DiscoverLenovoSystemMetrics();
    // Deliberate: no other spelling of either maker counts.
    if (vendorIs(1, {"Dell", "Alienware", "alienware"}))
        DiscoverDellRevisionsAndIDs();
}

} // namespace zorpsysinfosmbios2
