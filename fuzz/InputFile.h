// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace vellory::fuzz {

/// One file that every input is written to in turn, because the database engine reads files.
class InputFile {
  public:
    explicit InputFile(const char* name) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vellory-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        folder_ = pattern;
        file_ = folder_ / name;
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { std::filesystem::remove_all(folder_); }

    const std::filesystem::path& holding(const std::uint8_t* data, std::size_t size) const {
        std::ofstream(file_, std::ios::binary | std::ios::trunc)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return file_;
    }

  private:
    std::filesystem::path folder_;
    std::filesystem::path file_;
};

} // namespace vellory::fuzz
