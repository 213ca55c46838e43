// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace vellory::fuzz {

/// One file that every input is written to in turn, for what reads files and not bytes. It lies in
/// a folder of its own and in memory where the system has such a place: a disk would take longer
/// over each input than all the rest.
class InputFile {
  public:
    explicit InputFile(const std::filesystem::path& name) {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code error;
        const auto above = std::filesystem::is_directory(memory, error)
                               ? memory
                               : std::filesystem::temp_directory_path();
        std::string pattern = (above / "vellory-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        folder_ = pattern;
        file_ = folder_ / name;
        std::filesystem::create_directories(file_.parent_path());
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { std::filesystem::remove_all(folder_); }

    const std::filesystem::path& folder() const { return folder_; }

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
