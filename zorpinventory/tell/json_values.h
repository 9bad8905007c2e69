// A document's values, written as the document has them.
#pragma once

#include "document/document.h"
#include "writing/json_writer.h"

namespace zorpinventory::tell
{

void writeValue(embedded_host::writing::JsonWriter& json, const document::Value& value);
void writeNumber(embedded_host::writing::JsonWriter& json, const document::Number& number);
void writeChildLinks(embedded_host::writing::JsonWriter& json, const std::vector<document::ChildLink>& children);

/// A text, or null for an empty one.
void writeOrNull(embedded_host::writing::JsonWriter& json, std::string_view text);

} // namespace zorpinventory::tell
