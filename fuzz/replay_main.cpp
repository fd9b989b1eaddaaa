// fuzz_replay TARGET FOLDER: runs every file of a corpus through a target, with any compiler. A finding
// ends the process as it did when it was found.

#include <cstdio>
#include <string>

#include "base/files.h"
#include "target.h"

int main(int argc, char** argv) {
    using namespace keelview;
    const fuzz::Target* target = argc == 3 ? fuzz::FindTarget(argv[1]) : nullptr;
    if (target == nullptr) {
        std::fprintf(stderr, "usage: fuzz_replay TARGET FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[2];
    const auto names = ListFiles(folder, "*");
    for (const std::string& name : names) {
        std::printf("%s\n", name.c_str());
        std::fflush(stdout);  // the last line names the input that ended the process
        target->Run(ReadWholeFile(folder / name).value_or(""));
    }
    std::printf("%zu inputs\n", names.size());
    return names.empty() ? 1 : 0;
}
