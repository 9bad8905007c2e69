// Texts that are checked in and compared as a whole.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace tests
{

/// Fails the test unless the file holds this text. With BLESS=1 in the environment the file is written instead; the
/// difference that git shows is then what there is to review.
inline void expectFile(const std::filesystem::path& path, const std::string& text)
{
    if (std::getenv("BLESS") != nullptr) {
        std::ofstream(path) << text;
        return;
    }
    std::ifstream file(path);
    std::istringstream actual(text);
    std::string wanted;
    std::string got;
    for (int line = 1; true; ++line) {
        const bool more = static_cast<bool>(std::getline(file, wanted));
        const bool moreActual = static_cast<bool>(std::getline(actual, got));
        if (!more && !moreActual)
            return;
        ASSERT_EQ(more ? wanted : "(end)", moreActual ? got : "(end)") << path << ":" << line;
    }
}

} // namespace tests
