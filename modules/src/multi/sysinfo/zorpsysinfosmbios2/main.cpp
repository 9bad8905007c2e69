// The process's entry: registers the module and hands control to the framework.
#include "discovery.h"
#include "logging.h"
#include "orb5.h"

#include <cstdio>

int main(int argc, char* argv[])
{
    using namespace zorpsysinfosmbios2;
    using orb5::SysInfoModule;

    const lum::TraceLogger trace(loggerForTraces(), "main", kTracedSource, 2745);
    try {
        SysInfoModule::setCmdLineArgs(argc, argv);
        SysInfoModule::setVersion(6, 5, orb5::OrbString("000000001"));
        SysInfoModule::setModuleCapabilities(orb5::DeviceCapability::SMBIOS());
        SysInfoModule::setDiscoverDevicesCallback(DiscoverSMBIOS);
        SysInfoModule::start();
    } catch (const orb5::OrbException& exception) {
        std::printf("OrbException: %s\n", exception.toString().getUTF8Buffer());
    }
    // Deliberate: a failed run is not told by the exit code.
    return 0;
}
