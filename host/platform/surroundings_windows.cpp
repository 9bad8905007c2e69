// The process's surroundings on Windows.
#include "surroundings.h"

#include "files.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <sstream>

#include <windows.h>

#include <shellapi.h>

namespace embedded_host::platform
{

namespace
{

std::string utf8From(std::wstring_view wide) { return utf8FromPath(std::filesystem::path(wide)); }

/// The code page of the console before this program changed it.
UINT consoleCodePage = 0;

void restoreConsole() { SetConsoleOutputCP(consoleCodePage); }

} // namespace

std::vector<std::string> utf8Arguments(int argc, const char* const* argv)
{
    // What main got has lost every character that the code page does not have; the system still knows them. Arguments
    // that are not the process's are taken as they are.
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    if (count != argc || !wide)
        return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(utf8From(wide.get()[i]));
    return arguments;
}

void prepareStreams()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    if (consoleCodePage == 0 && (consoleCodePage = GetConsoleOutputCP()) != 0) {
        SetConsoleOutputCP(CP_UTF8);
        std::atexit(restoreConsole);
    }
}

std::optional<Terminal> terminal()
{
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (GetConsoleMode(output, &mode) == 0 || GetConsoleScreenBufferInfo(output, &buffer) == 0)
        return std::nullopt;
    const wchar_t* plain = _wgetenv(L"NO_COLOR");
    const bool wanted = plain == nullptr || *plain == L'\0';
    const bool colours = wanted && SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    return Terminal{static_cast<std::size_t>(buffer.srWindow.Right - buffer.srWindow.Left + 1), colours};
}

bool isTerminal(Stream stream) { return _isatty(_fileno(stream == Stream::Input ? stdin : stderr)) != 0; }

bool showsUtf8() { return true; }

std::vector<std::filesystem::path> configurationFolders()
{
    std::vector<std::filesystem::path> folders;
    for (const wchar_t* name : {L"APPDATA", L"ProgramData"})
        if (const wchar_t* folder = _wgetenv(name); folder != nullptr)
            folders.emplace_back(folder);
    return folders;
}

std::filesystem::path ownProgram()
{
    constexpr DWORD kLongestPath = 0x8000;
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
    return path;
}

std::vector<std::filesystem::path> programFolders()
{
    std::vector<std::filesystem::path> folders;
    const wchar_t* path = _wgetenv(L"PATH");
    std::wistringstream parts(path == nullptr ? L"" : path);
    for (std::wstring folder; std::getline(parts, folder, L';');)
        if (!folder.empty())
            folders.emplace_back(folder);
    return folders;
}

std::string userLanguage()
{
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name{};
    const int length = LCIDToLocaleName(GetUserDefaultUILanguage(), name.data(), static_cast<int>(name.size()), 0);
    return length > 0 ? utf8From(name.data()) : std::string();
}

} // namespace embedded_host::platform
