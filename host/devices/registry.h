// What the module declared and registered, and the discovery that is under way.
#pragma once

#include "embedded_host/inventory.h"

#include <memory>

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
    ModuleInfo module;
    void (*discover)() = nullptr;
    std::deque<Property> properties;
    std::vector<std::unique_ptr<DeclaredText>> texts;
    DeviceSink* sink = nullptr; ///< takes devices while a discovery runs
};

Registry& registry();

/// Lets the declarations forget what was set on them last, and with it the table that its texts may lie in.
void forgetValues();

} // namespace embedded_host::devices
