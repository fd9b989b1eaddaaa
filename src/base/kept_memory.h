#pragma once

namespace keelview {

/// To be called first in a program that reads races: memory that is given back stays with the program, up
/// to 256 MB, for what is read and worked out next. A race that is opened after another one, and all
/// passing work of threads, then need not ask the system for each 4 KB anew. Does nothing where the C
/// library is not GNU's.
void KeepMemory();

}  // namespace keelview
