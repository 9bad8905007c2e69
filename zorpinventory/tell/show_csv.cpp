// What was chosen, for spreadsheets and scripts.
#include "show.h"

#include "services/utf8.h"
#include "told.h"

#include <algorithm>

namespace zorpinventory::tell
{

namespace
{

/// Whether a spreadsheet would take the text for a formula.
bool looksLikeFormula(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    constexpr std::string_view kWide[] = {"＝", "＋", "－", "＠"}; // some take these for the narrow ones
    return first != std::string_view::npos &&
           (std::string_view("=+-@").find(text[first]) != std::string_view::npos ||
            std::ranges::any_of(kWide, [&](auto sign) { return text.substr(first).starts_with(sign); }));
}

void append(std::string& row, std::string_view text)
{
    const bool quoted = text.find_first_of(",\"") != std::string_view::npos || text.starts_with(' ');
    if (quoted)
        row += '"';
    for (const char c : text)
        row.append(c == '"' ? 2 : 1, c);
    if (quoted)
        row += '"';
}

/// A text that firmware may have written: printable, and text for every spreadsheet.
void appendText(std::string& row, std::string_view text)
{
    append(row, (looksLikeFormula(text) ? "'" : "") + embedded_host::services::printable(text));
}

} // namespace

void showAsCsv(embedded_host::writing::Output& output, const Shown& shown)
{
    constexpr std::string_view kEnd = "\r\n";
    output.write("uid,property,value,number,unit,code");
    output.write(kEnd);
    const auto& devices = shown.document.devices();
    std::string row;
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (!shown.devices[i])
            continue;
        for (const auto& property : devices[i].properties) {
            if (!shown.choice.has(property))
                continue;
            forEachText(property, [&](const Told& told) {
                row.clear();
                for (const auto text : {devices[i].uid, property.name}) {
                    appendText(row, text);
                    row += ',';
                }
                if (told.text == told.number)
                    append(row, told.text);
                else
                    appendText(row, told.text);
                append(row.append(","), told.number);
                appendText(row.append(","), told.unit);
                append(row.append(","), told.code);
                output.write(row);
                output.write(kEnd);
            });
        }
    }
}

void showAsTexts(embedded_host::writing::Output& output, const Shown& shown)
{
    const auto& devices = shown.document.devices();
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (!shown.devices[i])
            continue;
        for (const auto& property : devices[i].properties)
            if (shown.choice.has(property))
                forEachText(property, [&](const Told& told) {
                    output.write(embedded_host::services::printable(document::trimmed(told.text)));
                    output.write("\n");
                });
    }
}

} // namespace zorpinventory::tell
