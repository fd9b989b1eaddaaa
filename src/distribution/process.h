#pragma once

#include <string>
#include <vector>

namespace keelview {

/// Runs a program found on the search path and waits for its end; its exit status, or -1 if it cannot be
/// run or was killed. What it writes to its output is added to `output`, what it writes to its error output
/// is dropped. The command line has at least the program's name.
int RunAndWait(const std::vector<std::string>& commandLine, std::string& output);

}  // namespace keelview
