// The command line, one argument a line, the settings file and the list of tables, each tried with all of the input:
// mistakes are told, and nothing else comes of them.
#include "discovery.h"
#include "fuzzing.h"
#include "lum.h"
#include "orb5.h"
#include "services/utf8.h"
#include "session/many_tables.h"
#include "session/settings.h"
#include "support/memory_file.h"
#include "support/output_rules.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace
{

using namespace embedded_host;

void tryCommandLine(const std::string& text)
{
    std::vector<std::string> arguments{"zorpsysinfosmbios2"};
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        arguments.push_back(line);
    std::vector<const char*> pointers(arguments.size());
    std::ranges::transform(arguments, pointers.begin(), [](const auto& argument) { return argument.c_str(); });
    try {
        orb5::SysInfoModule::setCmdLineArgs(static_cast<int>(pointers.size()), pointers.data());
    } catch (const orb5::OrbException& mistake) {
        fuzz::expect(mistake.toString().lumString().size() != 0, "an empty message");
    }
}

/// Each line of the list becomes a line of output.
void tryList(const std::string& text)
{
    static const tests::MemoryFile noSettings;
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);
    std::istringstream list(text);
    tests::TextOutput output;
    session::printTables(list, {{}, noSettings.path()}, output);
    std::istringstream lines(output.text());
    std::ptrdiff_t count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        fuzz::expectNone(tests::faultInJson(line));
    const bool endsOpen = !text.empty() && text.back() != '\n';
    fuzz::expect(count == std::ranges::count(text, '\n') + (endsOpen ? 1 : 0), "another number of lines");
}

void trySettingsFile(fuzz::Input content)
{
    static tests::MemoryFile file;
    file.hold(content);
    try {
        session::readSettings({{}, file.path()});
    } catch (const std::runtime_error& mistake) {
        fuzz::expect(*mistake.what() != '\0', "an empty message");
        return;
    }
    lum::String text;
    bool flag = true;
    if (lum::Resource::getSetting("zorpsysinfosmbios2", "verbose.value", text, lum::LumLocale::getGlobalLocale()))
        lum::LumValue::getCorrectValue(text, lum::LUM_TYPE_BOOL, false).get(flag);
    session::reportUnusedSettings();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::vector<tests::LogLine> log;
    const tests::LogRecorder recorder(log);
    const fuzz::Input input(data, size);
    tryCommandLine(std::string(input.begin(), input.end()));
    lum::LogFactory::setPriority(1);
    trySettingsFile(input);
    tryList(std::string(input.begin(), input.end()));
    for (const auto& line : log) {
        std::string shown;
        services::appendPrintable(shown, line.text);
        fuzz::expectNone(tests::faultInText(shown));
    }
    return 0;
}
