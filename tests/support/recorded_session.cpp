// Recording discoveries.
#include "recorded_session.h"

#include "construction.h"
#include "discovery.h"
#include "inventory/numbers.h"
#include "memory_file.h"
#include "services/decimal.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>

namespace tests
{

namespace
{

using embedded_host::DeviceRecord;

class RecordingSink : public embedded_host::DeviceSink
{
public:
    explicit RecordingSink(std::vector<DeviceRecord>& devices) : devices_(devices) {}
    void take(DeviceRecord&& device) override { devices_.push_back(std::move(device)); }

private:
    std::vector<DeviceRecord>& devices_;
};

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string name = std::filesystem::temp_directory_path() / "zorp-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), name);
    path_ = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::file(const std::string& name, const Bytes& content) const
{
    writeBytes(path_ / name, content);
    return path_ / name;
}

std::filesystem::path TemporaryFolder::file(const std::string& name, std::string_view content) const
{
    return file(name, Bytes(content.begin(), content.end()));
}

void Firmware::offer(const Bytes& dump64) const
{
    folder_.file("smbios_entry_point", Bytes(dump64.begin(), dump64.begin() + 0x18));
    folder_.file("DMI", Bytes(dump64.begin() + 0x20, dump64.end()));
}

Bytes readBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const DeviceRecord& Recorded::device(const std::string& uid) const
{
    const auto found = std::ranges::find_if(devices, [&](const auto& each) { return each.uid == uid; });
    if (found == devices.end())
        throw std::out_of_range("no device " + uid);
    return *found;
}

std::string Recorded::value(const std::string& uid, const std::string& property) const
{
    const auto* value = device(uid).find(property);
    return value == nullptr ? "(absent)" : value->toString().getUTF8Buffer();
}

std::string Recorded::children(const std::string& uid) const
{
    std::string ids;
    const auto& children = device(uid).childBusIds;
    for (std::size_t i = 0; i < children.size(); ++i)
        ids.append(ids.empty() ? "" : ", ").append(children[i].id.value_or("(none)").bytes());
    return ids;
}

std::vector<std::string> Recorded::uids() const
{
    std::vector<std::string> all;
    for (const auto& each : devices)
        all.emplace_back(each.uid.bytes());
    return all;
}

std::vector<std::string> Recorded::messages(const std::string& logger) const
{
    std::vector<std::string> texts;
    for (const auto& line : log)
        if (line.logger == logger)
            texts.push_back(line.text);
    return texts;
}

Recorded discover(const Settings& settings)
{
    zorpsysinfosmbios2::filterTrivialStrings = true;
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);

    Recorded recorded;
    const LogRecorder logRecorder(recorded.log);
    RecordingSink sink(recorded.devices);
    // The settings file of whoever runs the tests shall not matter.
    const MemoryFile none;
    embedded_host::discover({settings, none.path()}, sink);
    return recorded;
}

Recorded discover(const Bytes& image, const Settings& settings)
{
    const MemoryFile table(image);
    Settings all{{"LoadTable", table.path()}};
    all.insert(all.end(), settings.begin(), settings.end());
    return discover(all);
}

std::string numbersIn(const orb5::Value& value)
{
    std::string numbers;
    const auto add = [&](const orb5::OrbString& text) {
        const auto& number = text.lumString().number();
        if (number.kind() == lum::Number::Kind::None)
            return;
        std::array<char, embedded_host::services::kLongestNumber> digits{};
        const auto* end = embedded_host::inventory::writeNumber(digits.begin(), number);
        numbers += number.kind() == lum::Number::Kind::Code ? " {code " : " {";
        numbers += std::string_view(digits.begin(), end);
        if (number.unit() != nullptr)
            numbers.append(" ").append(number.unit());
        numbers += '}';
    };
    if (const auto* text = std::get_if<orb5::OrbString>(&value.held()))
        add(*text);
    else if (const auto* elements = std::get_if<std::vector<orb5::OrbString>>(&value.held()))
        std::ranges::for_each(*elements, add);
    return numbers;
}

std::string inventoryText(const std::vector<DeviceRecord>& devices)
{
    std::string text;
    const auto line = [&](std::initializer_list<std::string_view> parts) {
        for (const auto part : parts)
            text += part;
        text += '\n';
    };
    for (const auto& device : devices) {
        std::string capabilities;
        for (const auto& capability : device.capabilities)
            capabilities += std::string(" ") + capability.name();
        line({device.uid.bytes(), " [", device.name.bytes(), "] [", device.identifier.bytes(), "] [",
              device.description.bytes(), "]", capabilities});
        for (const auto& [kind, uid] : device.uids)
            line({"  uid ", std::to_string(kind), " ", uid.bytes()});
        for (const auto& [declaration, value] : device.properties) {
            if (const auto* elements = std::get_if<std::vector<orb5::OrbString>>(&value.held())) {
                line({"  ", declaration->name, " =", numbersIn(value)});
                for (const auto& element : *elements)
                    line({"    - ", element.getUTF8Buffer()});
            } else {
                line({"  ", declaration->name, " = ", value.toString().getUTF8Buffer(), numbersIn(value)});
            }
        }
        for (std::size_t i = 0; i < device.childBusIds.size(); ++i) {
            const auto child = device.childBusIds[i];
            line({"  child ", child.bus.name(), " ", child.id.value_or("(none)").bytes()});
        }
    }
    return text;
}

} // namespace tests
