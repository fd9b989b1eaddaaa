#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// Puts a file where the program of a page finds it: a page has its files in memory, and those alone. One
/// at that path is replaced. The path begins with '/'. Its content, which may be written over there.
char* AddPageFile(const std::string& path, std::string bytes);

}  // namespace keelview
