// Settings: an INI file, read with Boost.PropertyTree, under what the command line says.
#include "settings.h"

#include "lum.h"
#include "module_name.h"
#include "platform/files.h"
#include "platform/surroundings.h"
#include "services/logging.h"
#include "services/messages.h"

#include <boost/property_tree/ini_parser.hpp>

#include <map>
#include <sstream>

namespace embedded_host::session
{

using services::message;

namespace
{

constexpr std::size_t kLargestSettingsFile = 0x100000;
/// The module asks for its settings under their names with this ending.
constexpr std::string_view kKeyEnding = ".value";

struct Setting
{
    std::string value;
    bool asked = false;
};

struct Settings
{
    std::map<std::string, Setting> given;                            ///< by key, for whatever section
    std::map<std::pair<std::string, std::string>, Setting> fromFile; ///< by section and key
    std::vector<std::string> outsideSections;                        ///< keys of the file that nobody can ask for
};

Settings& settings()
{
    static Settings current;
    return current;
}

/// The file to read: the one named, else the first that exists in the configuration folders.
std::optional<std::filesystem::path> settingsFile(const SettingsSource& source)
{
    if (source.file)
        return source.file;
    const std::string fileName = kModuleName + std::string(".ini");
    for (const auto& folder : platform::configurationFolders()) {
        std::error_code ignored;
        if (std::filesystem::exists(folder / fileName, ignored))
            return folder / fileName;
    }
    return std::nullopt;
}

void readFileInto(Settings& into, const std::filesystem::path& path)
{
    const std::string name = platform::utf8FromPath(path);
    try {
        const auto bytes = platform::readFile(path, kLargestSettingsFile);
        std::string text(bytes.begin(), bytes.end());
        if (text.starts_with("\xEF\xBB\xBF"))
            text.erase(0, 3);
        std::istringstream stream(text);
        stream.exceptions(std::ios::badbit); // else a lack of memory passes for the end of the file
        boost::property_tree::ptree tree;
        boost::property_tree::read_ini(stream, tree);
        for (const auto& [section, keys] : tree) {
            if (keys.empty()) // then it is no section, but a key in front of the first one
                into.outsideSections.push_back(section);
            for (const auto& [key, value] : keys)
                into.fromFile[{section, key}].value = value.data();
        }
    } catch (const boost::property_tree::ini_parser_error& error) {
        throw std::runtime_error(message("settings file %1, line %2: %3", name, error.line(), error.message()));
    } catch (const std::system_error& error) {
        throw std::runtime_error(message("settings file %1: %2", name, services::reason(error)));
    }
}

} // namespace

void readSettings(const SettingsSource& source)
{
    Settings fresh;
    for (const auto& [name, value] : source.given)
        fresh.given[name + std::string(kKeyEnding)].value = value;
    if (const auto file = settingsFile(source))
        readFileInto(fresh, *file);
    settings() = std::move(fresh);
}

void giveSetting(const std::string& name, const std::string& value)
{
    settings().given[name + std::string(kKeyEnding)].value = value;
}

void reportUnusedSettings()
{
    const auto warn = [](const std::string& text) { services::log(services::kWarning, "settings", text); };
    for (const auto& [key, setting] : settings().given)
        if (!setting.asked)
            warn(message("nothing asked for the setting %1 in this run; it had no effect",
                         key.substr(0, key.size() - kKeyEnding.size())));
    for (const auto& [place, setting] : settings().fromFile)
        if (!setting.asked)
            warn(message("nothing asked for the settings file's [%1] %2 in this run; it had no effect", place.first,
                         place.second));
    for (const auto& key : settings().outsideSections)
        warn(message("the settings file's %1 stands in front of every section and has no effect; it belongs behind the "
                     "line [%2]",
                     key, kModuleName));
}

} // namespace embedded_host::session

namespace lum
{

bool Resource::getSetting(const char* section, const char* key, String& out, const LumLocale& /*locale*/)
{
    auto& settings = embedded_host::session::settings();
    const auto given = settings.given.find(key);
    const auto fromFile = settings.fromFile.find({section, key});
    if (fromFile != settings.fromFile.end()) {
        fromFile->second.asked = true;
        out = String(fromFile->second.value);
    }
    if (given != settings.given.end()) {
        given->second.asked = true;
        out = String(given->second.value);
    }
    return given != settings.given.end() || fromFile != settings.fromFile.end();
}

} // namespace lum
