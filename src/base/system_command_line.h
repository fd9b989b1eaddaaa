#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace keelview {

// What a program without a window is told and tells; one implementation for each family of systems.

/// The words of the command line behind the program's name, UTF-8, from what main is given.
std::vector<std::string> ArgumentsOf(int argc, char** argv);

/// The folder that the program's file lies in, from how it was called; as it was called where the system
/// does not tell.
std::filesystem::path OwnFolder(const char* calledAs);

/// From then on a line ends with '\n' alone in what is written there.
void KeepLineEnds(std::FILE* file);

}  // namespace keelview
