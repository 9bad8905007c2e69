// Comparing texts with files, line by line.
#include "expected_file.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace tests
{

void expectFile(const std::filesystem::path& path, const std::string& text)
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
