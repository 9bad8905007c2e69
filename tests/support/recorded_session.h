// Runs the real module under the real host on a table, and records what it publishes and logs.
#pragma once

#include "embedded_host/firmware.h"
#include "embedded_host/session.h"
#include "log_recorder.h"
#include "table_builder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tests
{

/// A folder of this test's own, gone with it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Writes a file and returns its path.
    std::filesystem::path file(const std::string& name, const Bytes& content) const;
    std::filesystem::path file(const std::string& name, std::string_view content) const;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The firmware's places taken by a folder of the test's own, as long as this object lives.
class Firmware
{
public:
    Firmware() { embedded_host::firmwarePlaces() = {folder_.path(), folder_ / "systab", folder_ / "mem"}; }
    ~Firmware() { embedded_host::firmwarePlaces() = before_; }
    Firmware(const Firmware&) = delete;
    Firmware& operator=(const Firmware&) = delete;

    /// Lays down a dump's entry point and table as the kernel shows them.
    void offer(const Bytes& dump64) const;

    const TemporaryFolder& folder() const { return folder_; }

private:
    TemporaryFolder folder_;
    embedded_host::FirmwarePlaces before_ = embedded_host::firmwarePlaces();
};

Bytes readBytes(const std::filesystem::path& path);

/// What one discovery brought.
struct Recorded
{
    std::vector<embedded_host::DeviceRecord> devices;
    std::vector<LogLine> log;

    /// The device with this identifier; throws when there is none.
    const embedded_host::DeviceRecord& device(const std::string& uid) const;

    /// The text of a device's property, or "(absent)".
    std::string value(const std::string& uid, const std::string& property) const;

    /// The identifiers of the children that a device names, separated like a list's elements.
    std::string children(const std::string& uid) const;

    /// The identifiers of all devices, in the order in which they were published.
    std::vector<std::string> uids() const;

    /// The messages of one logger.
    std::vector<std::string> messages(const std::string& logger) const;
};

using Settings = std::vector<std::pair<std::string, std::string>>;

/// One discovery with these settings alone. The module's flags are those of a fresh process.
Recorded discover(const Settings& settings);

/// One discovery of a table that is loaded from a file.
Recorded discover(const Bytes& image, const Settings& settings = {});
inline Recorded discover(const TableBuilder& table, const Settings& settings = {})
{
    return discover(table.dump64(3, 2, 0), settings);
}

/// The numbers that a value's texts show: " {3200000000 HERTZ}", " {code 7} {code 13}".
std::string numbersIn(const orb5::Value& value);

/// Device, properties with their numbers, and links in call order, one a line.
std::string inventoryText(const std::vector<embedded_host::DeviceRecord>& devices);

} // namespace tests
