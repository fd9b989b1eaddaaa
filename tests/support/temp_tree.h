#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <set>
#include <string>
#include <string_view>

namespace keelview {

/// A folder of its own for one test, gone when the test is over.
class TempTree {
  public:
    explicit TempTree(const std::filesystem::path& below = std::filesystem::temp_directory_path())
        : root_(below / NextName()) {
        std::filesystem::create_directories(root_);
    }
    ~TempTree() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    TempTree(const TempTree&) = delete;
    TempTree& operator=(const TempTree&) = delete;

    const std::filesystem::path& Root() const { return root_; }

    /// Writes a file below the root, with the folders it needs.
    void Write(std::string_view relative, std::string_view bytes) const {
        const auto path = root_ / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }

    /// All bytes of a file below the root; empty if there is none.
    std::string Read(std::string_view relative) const {
        std::ifstream file(root_ / relative, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The files below a folder of the root, in order, each with a space behind it.
    std::string Files(const std::filesystem::path& folder) const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root_ / folder))
            if (!entry.is_directory())
                names.insert(entry.path().lexically_relative(root_ / folder).string());
        return std::accumulate(
            names.begin(), names.end(), std::string(),
            [](const std::string& text, const std::string& name) { return text + name + " "; });
    }

  private:
    static std::string NextName() {
        static std::atomic<int> number{0};
        return "keelview-test-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
    }
    std::filesystem::path root_;
};

}  // namespace keelview
