// Running discoveries from a program of one's own, as tests, fuzzers and benchmarks do.
#pragma once

#include "embedded_host/inventory.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace embedded_host
{

/// What a discovery is run with.
struct DiscoveryOptions
{
    std::vector<std::pair<std::string, std::string>> settings; ///< name and value, the last of a name wins
    std::optional<std::filesystem::path> settingsFile;         ///< none: the configuration folders are searched
};

/// Calls the module's discovery callback once; the sink takes the devices. Throws orb5::OrbException.
void discover(const DiscoveryOptions& options, DeviceSink& sink);

} // namespace embedded_host
