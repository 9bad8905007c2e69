// What firmware leaves unfilled, and what it fills in although it looks like that.
#include "placeholders/placeholders.h"

#include <gtest/gtest.h>

namespace
{

using embedded_host::placeholders::isReal;
using embedded_host::placeholders::Kind;

TEST(Placeholders, AreToldFromRealTexts)
{
    const std::pair<Kind, std::vector<const char*>> placeholders[] = {
        {Kind::Name,
         {"", "  ", "-._ ", "\x01", "\xFF\xFF", "\xEF\xBF\xBD", "To Be Filled By O.E.M.", "to be filled by o.e.m",
          "N/A", "SerNum0", "A1_PartNum2", "Dimm0_AssetTag", "Type2 - Board Serial Number", "System Product Name",
          "ModulePartNumber00", "NO DIMM", "$(DEFAULT_STRING)", "Not Specified", "Unknown"}},
        {Kind::Place, {"Not Specified", "NO DIMM", "To Be Filled By O.E.M.", " "}},
        {Kind::Serial,
         {"Not Specified",
          "0",
          "00000000",
          "FFFFFFFF",
          "xxxxxxx",
          "--------",
          "0123456789",
          "SYS-1234567890",
          "BSN12345678901234567",
          "1234",
          " 987654 ",
          "1234-B0",
          "EVAL",
          "IATPASS",
          "48spaces",
          "ABCD",
          "Fake",
          "00-00",
          "..0..",
          "Asset-1234567890"}},
        {Kind::Uuid,
         {"00000000-0000-0000-0000-000000000000", "FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF-FF",
          "03000200-0400-0500-0006-000700080009", "00-02-00-03-00-04-00-05-00-06-00-07-00-08-00-09",
          "12345678-1234-5678-90ab-cddeefaabbcc", "4C4C4544-0000-2010-8020-80C04F202020"}},
    };
    for (const auto& [kind, texts] : placeholders)
        for (const auto* text : texts)
            EXPECT_FALSE(isReal(text, kind)) << text;

    const std::pair<Kind, std::vector<const char*>> real[] = {
        {Kind::Name,
         {"1.1", "1", "X", "HP", "41C1D5BE", "System 9000", "Default II", "0123456789", "\xE4\xB8\xAD\xE6\x96\x87",
          "PowerEdge R630", "OEMs", "12345678"}},
        {Kind::Place, {"BANK 0", "DIMM 1", "System Board", "CPU", "A1"}},
        {Kind::Serial,
         {"41C1D5BE", " 41C1D5BE ", "5E0071C4", "1", "111", "10203", "1235", "01234567899", "9876543219", "ABCDE",
          "PHKS1234567890123456A", "ABCDEFGHI1234", "98765x"}},
        {Kind::Uuid,
         {"4C4C4544-0051-3510-8052-B4C04F4D3332", "01-02-03-04-05-06-07-08-09-0A-0B-0C-0D-0E-0F-10", "03000200"}},
    };
    for (const auto& [kind, texts] : real)
        for (const auto* text : texts)
            EXPECT_TRUE(isReal(text, kind)) << text;
}

} // namespace
