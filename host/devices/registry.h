// What the module declared and registered, and the discovery that is under way.
#pragma once

#include "embedded_host/inventory.h"
#include "module_name.h"

#include <deque>
#include <memory>
#include <memory_resource>

namespace embedded_host::devices
{

struct DeclaredText : orb5::LocalizedString
{
    std::string key;
    mutable orb5::OrbString text; ///< what was last told, in the language of that moment
};

/// Declarations are made before `main`, so the registry is made on first use.
struct Registry
{
    static constexpr std::size_t kFirstMemory = 0x20000; ///< bytes, enough for some 400 properties

    ModuleInfo module{kModuleName, 0, 0, {}, {}};
    void (*discover)() = nullptr;
    std::pmr::monotonic_buffer_resource memory{kFirstMemory}; ///< of the properties, which are never given back
    std::pmr::deque<Property> properties{&memory};
    std::vector<std::unique_ptr<DeclaredText>> texts;
    DeviceSink* sink = nullptr; ///< takes devices while a discovery runs
};

Registry& registry();

/// Lets the declarations forget what was set on them last, and with it the table that its texts may lie in.
void forgetValues();

} // namespace embedded_host::devices
