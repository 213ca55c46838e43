// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vellory {

/// Which file extensions belong to a MIME type, by the shared MIME database (its `globs2` and
/// `aliases` files). Not for finding the type of a file.
class MimeGlobs {
  public:
    /// `folders` are those of the database, the most important first. Nothing is read yet.
    explicit MimeGlobs(std::vector<std::filesystem::path> folders);

    /// Reads the database unless it is known as it is. What is damaged or far too long in it is
    /// passed over.
    void read();

    /// In lower case without the dot ("tar.gz"), also for another name of the type. Patterns that
    /// are no plain extension (`*~`, `Makefile`) are none.
    const std::vector<std::string>& extensions(std::string_view mimeType) const;

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };
    template <class T>
    using Table = std::unordered_map<std::string, T, Hash, std::equal_to<>>;

    void readGlobs(const std::filesystem::path& file);
    void readAliases(const std::filesystem::path& file);

    std::vector<std::filesystem::path> folders_;
    std::vector<std::filesystem::file_time_type> readAt_;
    Table<std::vector<std::string>> extensions_;
    Table<std::string> aliases_;
};

} // namespace vellory
