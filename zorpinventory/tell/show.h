// What was chosen of a document, in every form.
#pragma once

#include "choice/choice.h"
#include "outline/drawing.h"
#include "writing/output.h"

namespace zorpinventory::tell
{

/// What is shown: which devices of the document, and of these which properties.
struct Shown
{
    const document::Document& document;
    const choice::Choice& choice;
    std::vector<bool> devices; ///< as choice::chosen tells
};

/// The tree of the chosen devices with those on the way to them as headlines. `all`: what is unknown, empty or internal
/// too.
void showAsTree(embedded_host::writing::Output& output, const Shown& shown, const embedded_host::outline::Looks& looks,
                bool all);

/// The chosen properties' bare texts, one a line.
void showAsTexts(embedded_host::writing::Output& output, const Shown& shown);

/// The document with what was chosen.
void showAsJson(embedded_host::writing::Output& output, const Shown& shown);

/// One device a line.
void showAsLines(embedded_host::writing::Output& output, const Shown& shown);

/// One row for each text of each property, as RFC 4180 has it.
void showAsCsv(embedded_host::writing::Output& output, const Shown& shown);

} // namespace zorpinventory::tell
