// Texts that are checked in and compared as a whole.
#pragma once

#include <filesystem>
#include <string>

namespace tests
{

/// Fails the test unless the file holds this text. With BLESS=1 in the environment the file is written instead; the
/// difference that git shows is then what there is to review.
void expectFile(const std::filesystem::path& path, const std::string& text);

} // namespace tests
