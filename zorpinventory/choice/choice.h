// Which devices and properties are meant, and what is known under the field's names.
#pragma once

#include "document/document.h"
#include "knowledge/keywords.h"

#include <set>

namespace zorpinventory::choice
{

/// Empty lists restrict nothing.
struct Choice
{
    std::set<unsigned> types = {};
    std::set<std::uint16_t> handles = {};
    std::vector<std::string> properties = {};

    bool everything() const { return types.empty() && handles.empty() && properties.empty(); }
    bool has(const document::Property& property) const;
};

/// The handle of the structure that a device was made of; none for the root and for groups.
std::optional<std::uint16_t> handleOf(const document::Device& device);

/// Whether each of the document's devices is meant. With properties only those are that have one of them.
std::vector<bool> chosen(const document::Document& document, const Choice& choice);

/// What is known under a name, one text for each device that tells it.
std::vector<std::string> textsOf(const document::Document& document, const knowledge::Keyword& keyword);

} // namespace zorpinventory::choice
