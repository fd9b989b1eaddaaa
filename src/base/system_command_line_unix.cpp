#include <unistd.h>

#include <array>

#include "base/paths.h"
#include "base/system_command_line.h"

namespace keelview {

std::vector<std::string> ArgumentsOf(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

// Linux tells it; other systems have no such link.
std::filesystem::path OwnFolder(const char* calledAs) {
    std::array<char, 4096> place{};
    const auto size = ::readlink("/proc/self/exe", place.data(), place.size());
    const bool told = size > 0 && static_cast<std::size_t>(size) < place.size();
    const std::string_view file =
        told ? std::string_view(place.data(), static_cast<std::size_t>(size)) : calledAs;
    return PathOf(file).parent_path();
}

void KeepLineEnds(std::FILE* /*file*/) {}

}  // namespace keelview
