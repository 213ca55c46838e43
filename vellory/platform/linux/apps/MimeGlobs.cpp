// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/MimeGlobs.h"

#include <algorithm>

#include "Support/AtomicFile.h"
#include "Support/Text.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// The database of a full desktop takes 40 KB.
constexpr std::size_t maxFileBytes = 4U * 1024U * 1024U;
constexpr std::size_t maxExtensionBytes = 32;
/// Above any honest type; a hostile database must not make every app carry thousands of words.
constexpr std::size_t maxExtensions = 64;

/// Calls `visit(line)` for every line of the file that is no comment.
template <class Visit>
void eachLine(const fs::path& file, Visit visit) {
    const auto content = AtomicFile::read(file, maxFileBytes);
    std::string_view rest = content ? std::string_view(*content) : std::string_view();
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (!line.empty() && line.front() != '#') {
            visit(line);
        }
    }
}

/// The extension in a pattern such as "*.tar.gz"; "" when it is more than that.
std::string extensionIn(std::string_view pattern) {
    if (!pattern.starts_with("*.") || pattern.size() - 2 > maxExtensionBytes ||
        pattern.find_first_of("*?[", 2) != std::string_view::npos || !Text::isValidUtf8(pattern)) {
        return {};
    }
    return Text::lowercased(pattern.substr(2));
}

} // namespace

MimeGlobs::MimeGlobs(std::vector<fs::path> folders) : folders_(std::move(folders)) {}

void MimeGlobs::read() {
    std::vector<fs::file_time_type> stamps;
    for (const fs::path& folder : folders_) {
        std::error_code missing;
        stamps.push_back(fs::last_write_time(folder / "globs2", missing));
    }
    if (stamps == readAt_) {
        return;
    }
    readAt_ = std::move(stamps);
    extensions_.clear();
    aliases_.clear();
    // The most important last, so that its word counts.
    for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) {
        readGlobs(*folder / "globs2");
        readAliases(*folder / "aliases");
    }
}

void MimeGlobs::readGlobs(const fs::path& file) {
    // A line is weight:type:pattern, then perhaps :flags.
    eachLine(file, [this](std::string_view line) {
        const std::size_t typeAt = line.find(':') + 1;
        const std::size_t patternAt = typeAt == 0 ? 0 : line.find(':', typeAt) + 1;
        if (patternAt == 0) {
            return;
        }
        const std::string_view type = line.substr(typeAt, patternAt - 1 - typeAt);
        const std::string_view pattern =
            line.substr(patternAt, line.find(':', patternAt) - patternAt);
        if (pattern == "__NOGLOBS__") {
            extensions_.erase(std::string(type));
            return;
        }
        std::string extension = extensionIn(pattern);
        if (extension.empty()) {
            return;
        }
        auto& known = extensions_[std::string(type)];
        if (known.size() < maxExtensions && std::ranges::find(known, extension) == known.end()) {
            known.push_back(std::move(extension));
        }
    });
}

void MimeGlobs::readAliases(const fs::path& file) {
    eachLine(file, [this](std::string_view line) {
        if (const std::size_t space = line.find(' '); space != std::string_view::npos) {
            aliases_.insert_or_assign(std::string(line.substr(0, space)),
                                      std::string(line.substr(space + 1)));
        }
    });
}

const std::vector<std::string>& MimeGlobs::extensions(std::string_view mimeType) const {
    static const std::vector<std::string> none;
    const auto alias = aliases_.find(mimeType);
    const auto found =
        extensions_.find(alias == aliases_.end() ? mimeType : std::string_view(alias->second));
    return found == extensions_.end() ? none : found->second;
}

} // namespace vellory
