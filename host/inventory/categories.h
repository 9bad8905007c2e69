// The names of property categories, in the order in which they are told.
#pragma once

#include "orb5.h"

#include <vector>

namespace embedded_host::inventory
{

inline std::vector<const char*> categoryNames(const orb5::PropertyCategory& categories)
{
    using Category = orb5::PropertyCategory;
    struct Named
    {
        const Category& (*category)();
        const char* name;
    };
    static constexpr Named kAll[] = {
        {Category::SysInfo, "SysInfo"},   {Category::Tier1, "Tier1"},
        {Category::Tier2, "Tier2"},       {Category::Tier3, "Tier3"},
        {Category::Key, "Key"},           {Category::ParentKey, "ParentKey"},
        {Category::Internal, "Internal"}, {Category::RequiredForEnumeration, "RequiredForEnumeration"},
        {Category::Volatile, "Volatile"},
    };
    std::vector<const char*> names;
    for (const auto& [category, name] : kAll)
        if (categories.contains(category()))
            names.push_back(name);
    return names;
}

} // namespace embedded_host::inventory
