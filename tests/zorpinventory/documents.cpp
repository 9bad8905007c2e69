// Making documents.
#include "documents.h"

#include "inventory/json_inventory.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace tests
{

std::string documentText(const Bytes& image)
{
    using embedded_host::inventory::JsonInventory;
    return printed<JsonInventory>(discover(image).devices, JsonInventory::Layout::Document);
}

std::string detailedText(const Bytes& image)
{
    using embedded_host::inventory::JsonDetails;
    using embedded_host::inventory::JsonInventory;
    const auto recorded = discover(image, {{"verbose", "true"}, {"FilterTrivialStrings", "true"}});
    return printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Document,
                                  JsonDetails{.wanted = true, .source = {}});
}

namespace
{

/// Replaces the number of a handle in a text, which may go on behind it: "SMBIOS:0x0A00:1".
void renumber(rapidjson::Value& text, const std::vector<unsigned>& handles, rapidjson::Document& document)
{
    if (!text.IsString())
        return;
    std::string word = text.GetString();
    const auto at = word.find("0x");
    if (at == std::string::npos)
        return;
    const bool isLong = word.size() - at == 10; // as type 35 has them
    const auto digits = word.substr(at + 2, isLong ? 8 : 4);
    const auto handle = std::stoul(digits, nullptr, 16);
    if (handle >= 0xFFFE)
        return;
    char fresh[9];
    std::snprintf(fresh, sizeof fresh, isLong ? "%08X" : "%04X", handles[handle]);
    word.replace(at + 2, digits.size(), fresh);
    text.SetString(word.c_str(), document.GetAllocator());
}

void shuffle(rapidjson::Document& document, std::mt19937& random)
{
    std::vector<std::size_t> order(document["devices"].Size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::shuffle(order, random);
    rapidjson::Value devices(rapidjson::kArrayType);
    for (const auto place : order)
        devices.PushBack(document["devices"][static_cast<rapidjson::SizeType>(place)], document.GetAllocator());
    document["devices"] = devices;
}

std::string printed(const rapidjson::Document& document)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    document.Accept(writer);
    return buffer.GetString();
}

} // namespace

std::string shuffled(const std::string& text, unsigned seed)
{
    rapidjson::Document document;
    document.Parse(text.c_str());
    std::mt19937 random(seed);
    shuffle(document, random);
    return printed(document);
}

std::string shuffledAndRenumbered(const std::string& text, unsigned seed)
{
    rapidjson::Document document;
    document.Parse(text.c_str());
    std::mt19937 random(seed);
    std::vector<unsigned> handles(0xFFFE);
    std::iota(handles.begin(), handles.end(), 0U);
    std::ranges::shuffle(handles, random);
    for (auto& device : document["devices"].GetArray()) {
        renumber(device["uid"], handles, document);
        if (device.HasMember("childBusIds"))
            for (auto& child : device["childBusIds"].GetArray())
                renumber(child["id"], handles, document);
        auto& properties = device["properties"];
        for (auto member = properties.MemberBegin(); member < properties.MemberEnd(); ++member) {
            const std::string_view property = member->name.GetString();
            auto& value = member->value;
            if (property != "smbios2_parent" && !property.ends_with("_handle") && !property.ends_with("_members"))
                continue;
            if (value.IsArray())
                for (auto& element : value.GetArray())
                    renumber(element, handles, document);
            else
                renumber(value.IsObject() ? value["text"] : value, handles, document);
        }
    }
    shuffle(document, random);
    return printed(document);
}

Bytes Machine::table() const
{
    std::vector<StructureBuilder> structures;
    std::uint16_t next = firstHandle;
    const auto add = [&](unsigned char type, unsigned char length) -> StructureBuilder& {
        return structures.emplace_back(type, next++, length);
    };
    structures.reserve(64); // so that references stay
    add(0, 0x18).text(0x04, "Zorp Firmware Works").text(0x05, firmware).text(0x08, "11/04/2019");
    add(1, 0x1B).text(0x04, "Halvard").text(0x05, "Kvitnes").text(0x07, serial).bytes(0x08, {uuid.begin(), uuid.end()});
    add(2, 0x0F).text(0x04, "Halvard").text(0x05, "KD2").text(0x07, "HI-MB-118204").put(word(0x0B), next);
    add(3, 0x15).text(0x04, "Halvard").text(0x07, "HI-CH-7719").put(byte(0x09), bootState);
    for (const auto& processor : processors) {
        const bool there = !processor.version.empty();
        auto& structure = add(4, 0x30);
        structure.text(0x04, processor.socket).put(byte(0x18), there ? 0x41 : 0x00);
        structure.put(word(0x1A), 0xFFFF).put(word(0x1C), 0xFFFF).put(word(0x1E), 0xFFFF);
        if (!there)
            continue;
        structure.text(0x10, processor.version).put(word(0x1A), next);
        add(7, 0x13).text(0x04, processor.cache).put(word(0x05), 0x0180).put(word(0x09), 64);
    }
    for (const auto& slot : slots)
        add(9, 0x0D).text(0x04, slot.name).put(byte(0x07), slot.used ? 4 : 3);
    const auto array = next;
    add(16, 0x17)
        .put(byte(0x05), 3)
        .put(dword(0x07), 0x08000000)
        .put(word(0x0D), static_cast<std::uint16_t>(dimms.size()));
    add(19, 0x0F).put(dword(0x08), mappedEnd).put(word(0x0C), array);
    for (const auto& dimm : dimms) {
        auto& structure = add(17, 0x28);
        structure.put(word(0x04), array).put(word(0x06), 0xFFFE).text(0x10, dimm.locator);
        if (!dimm.bank.empty())
            structure.text(0x11, dimm.bank);
        if (dimm.serial.empty())
            continue;
        structure.put(word(0x0C), dimm.megabytes).put(byte(0x12), 0x1A).put(word(0x15), dimm.megahertz);
        structure.text(0x17, "Tindrel").text(0x18, dimm.serial).text(0x1A, dimm.part);
    }
    add(22, 0x1A).text(0x04, "Rear").text(0x07, "SC-77120").text(0x08, "Cell 4");
    add(32, 0x0B).put(byte(0x0A), bootStatus == "fine" ? 0 : 2);
    if (backwards)
        std::ranges::reverse(structures);
    TableBuilder table;
    for (const auto& structure : structures)
        table.add(structure);
    table.end();
    return wideEntryPoint ? table.dump64(3, 0, 0) : table.dump32(3, 0);
}

} // namespace tests
