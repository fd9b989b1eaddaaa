#include <windows.h>
// The others need it before them.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <filesystem>

#include "base/system_command_line.h"

namespace keelview {

// What main is given there has lost what the code page of the system does not hold.
std::vector<std::string> ArgumentsOf(int /*argc*/, char** /*argv*/) {
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::u8string utf8 = std::filesystem::path(words[i]).u8string();
        arguments.emplace_back(utf8.begin(), utf8.end());
    }
    ::LocalFree(words);
    return arguments;
}

std::filesystem::path OwnFolder(const char* /*calledAs*/) {
    std::wstring place(32768, L'\0');  // the longest path that the system has
    place.resize(::GetModuleFileNameW(nullptr, place.data(), static_cast<DWORD>(place.size())));
    return std::filesystem::path(place).parent_path();
}

void KeepLineEnds(std::FILE* file) {
    ::_setmode(::_fileno(file), _O_BINARY);
}

}  // namespace keelview
