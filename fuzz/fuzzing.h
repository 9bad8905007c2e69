// What the fuzz targets share.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

namespace fuzz
{

using Input = std::span<const unsigned char>;

/// Takes the first byte, which chooses how the others are used.
inline unsigned takeChoice(Input& input)
{
    const unsigned choice = input.empty() ? 0 : input.front();
    input = input.subspan(input.empty() ? 0 : 1);
    return choice;
}

/// Aborts, which the fuzzer takes for a finding, unless nothing is wrong.
inline void expectNone(const std::string& fault)
{
    if (fault.empty())
        return;
    std::fprintf(stderr, "finding: %s\n", fault.c_str());
    std::abort();
}

inline void expect(bool holds, const char* fault) { expectNone(holds ? "" : fault); }

} // namespace fuzz
