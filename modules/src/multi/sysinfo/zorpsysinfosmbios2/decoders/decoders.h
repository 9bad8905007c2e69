// The decoders, in the order in which the driver calls them. Each publishes the structures of its type, most
// of them as one device each; ports, slots and the like also get a device for them all.
#pragma once

namespace zorpsysinfosmbios2
{

void DiscoverBIOS();                      // 0
void DiscoverSystem();                    // 1
void DiscoverBaseBoard();                 // 2
void DiscoverEnclosure();                 // 3
void DiscoverProcessors();                // 4
void DiscoverMemoryController();          // 5
void DiscoverMemoryModule();              // 6
void DiscoverCache();                     // 7
void DiscoverPorts();                     // 8
void DiscoverSlots();                     // 9
void DiscoverOnBoardDevices();            // 10
void DiscoverOEMStrings();                // 11
void DiscoverConfigOptions();             // 12
void DiscoverBIOSLanguages();             // 13
void DiscoverGroup();                     // 14
void DiscoverSystemLog();                 // 15
void DiscoverMemoryArray();               // 16
void DiscoverMemoryDevice();              // 17
void Discover32bitMemoryError();          // 18
void DiscoverMemoryArrayMappedAddress();  // 19
void DiscoverMemoryDeviceMappedAddress(); // 20
void DiscoverPointingDevice();            // 21
void DiscoverBattery();                   // 22
void DiscoverSystemReset();               // 23
void DiscoverHardwareSecurity();          // 24
void DiscoverVoltageProbe();              // 26
void DiscoverCoolingDevice();             // 27
void DiscoverTemperatureProbe();          // 28
void DiscoverCurrentProbe();              // 29
void DiscoverOutOfBandRemoteAccess();     // 30
void DiscoverBootInformation();           // 32
void Discover64bitMemoryError();          // 33
void DiscoverManagementDevice();          // 34
void DiscoverManagementDeviceComponent(); // 35
void DiscoverDeviceInformation();         // 38
void DiscoverPowerSupply();               // 39
void DiscoverOnBoardDevicesExt();         // 41

void DiscoverLenovoSystemMetrics(); // 131
void DiscoverDellRevisionsAndIDs(); // 208

} // namespace zorpsysinfosmbios2
