// Running the module's discovery, and what the host keeps of it beside the devices.
#include "discovery.h"

#include "devices/registry.h"
#include "embedded_host/session.h"
#include "module_name.h"
#include "services/logging.h"
#include "settings.h"
#include "table/library.h"

#include <charconv>
#include <stdexcept>

namespace embedded_host
{

namespace session
{

namespace
{

/// Lets the table library know which structures have devices.
class NotingSink : public DeviceSink
{
public:
    explicit NotingSink(DeviceSink& next) : next_(next) {}
    void take(DeviceRecord&& device) override
    {
        table::noteDevice();
        next_.take(std::move(device));
    }

private:
    DeviceSink& next_;
};

/// Makes a sink the one that takes devices, as long as this object lives.
class Receiving
{
public:
    explicit Receiving(DeviceSink& sink) { devices::registry().sink = &sink; }
    ~Receiving() { devices::registry().sink = nullptr; }
    Receiving(const Receiving&) = delete;
    Receiving& operator=(const Receiving&) = delete;
};

/// Takes from the module's log which memory sizes no memory has.
void hearSizes(std::string_view logger, std::string_view text)
{
    unsigned message = 0;
    unsigned exponent = 0;
    std::from_chars(text.data(), text.data() + text.size(), message);
    const bool isSize = message == 699 || message == 758 || message == 775;
    if (!isSize || logger != kModuleName)
        return;
    const auto number = text.substr(text.rfind(' ') + 1);
    std::from_chars(number.data(), number.data() + number.size(), exponent);
    table::noteUnrealisticSize(exponent, message);
}

} // namespace

void runDiscovery(DeviceSink& sink)
{
    const auto callback = devices::registry().discover;
    if (callback == nullptr)
        throw orb5::OrbException("no module has registered a discovery");
    table::beginDiscovery();

    const services::LogListener sizes(services::kError, [](int, auto logger, auto text) { hearSizes(logger, text); });
    NotingSink noting(sink);
    const Receiving receiving(noting);
    callback();
}

} // namespace session

void discover(const SettingsSource& settings, DeviceSink& sink)
{
    try {
        session::readSettings(settings);
    } catch (const std::runtime_error& error) {
        throw orb5::OrbException(lum::String(std::string_view(error.what())));
    }
    const services::ShortLog shortLog;
    session::runDiscovery(sink);
    session::reportUnusedSettings();
}

} // namespace embedded_host
