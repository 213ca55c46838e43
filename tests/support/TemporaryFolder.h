// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vellory::test {

/// A folder of its own for one test, gone when the test ends.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vellory-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = std::filesystem::canonical(pattern);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file, and the folders above it, without any of the program's own code.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return file;
    }

  private:
    std::filesystem::path path_;
};

inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream input(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), {}};
}

/// The names of a folder's entries, hidden ones included, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

/// Every file below `folder` with its content.
inline std::map<std::string, std::string> filesBelow(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[entry.path().string()] = contentOf(entry.path());
        }
    }
    return files;
}

} // namespace vellory::test

namespace vellory {
using test::TemporaryFolder;
} // namespace vellory
