// The way in of libFuzzer: the program's own name says which target it is.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "target.h"

namespace {

const keelview::fuzz::Target*& Chosen() {
    static const keelview::fuzz::Target* chosen = nullptr;
    return chosen;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(const int* argc, char*** argv) {
    const std::string name = *argc > 0 ? std::filesystem::path((*argv)[0]).filename().string() : "";
    Chosen() = keelview::fuzz::FindTarget(std::string_view(name).substr(name.find('_') + 1));
    if (Chosen() == nullptr) {
        std::fprintf(stderr, "%s is the name of no target\n", name.c_str());
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Chosen()->Run({reinterpret_cast<const char*>(data), size});
    return 0;
}
