// SPDX-License-Identifier: Apache-2.0
#include "shell/ScratchCopy.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

#include "Board/VelloryPaths.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// Folders within the support folder, at the deepest a display's within the history; also what ends
/// a link to a folder above itself.
constexpr int deepest = 2;

bool isFailure(const std::error_code& error) {
    return error && error != std::errc::no_such_file_or_directory;
}

/// Regular files and folders; links are followed, as they are when the files are read. What is not
/// there, or goes meanwhile, is passed over.
std::error_code copyContent(const fs::path& from, const fs::path& to, int depth,
                            const fs::path& except) {
    std::error_code error;
    fs::create_directories(to, error);
    for (fs::directory_iterator entry(from, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path copy = to / entry->path().filename();
        std::error_code failure;
        if (entry->is_regular_file(failure)) {
            fs::copy_file(entry->path(), copy, failure);
        } else if (depth < deepest && entry->path() != except && entry->is_directory(failure)) {
            failure = copyContent(entry->path(), copy, depth + 1, except);
        }
        if (isFailure(failure)) {
            return failure;
        }
    }
    return isFailure(error) ? error : std::error_code();
}

} // namespace

std::expected<ScratchCopy, std::error_code> ScratchCopy::make(const fs::path& support,
                                                              const fs::path& settings) {
    std::error_code error;
    std::string pattern = (fs::temp_directory_path(error) / "vellory-XXXXXX").string();
    if (!error && ::mkdtemp(pattern.data()) == nullptr) {
        error = std::error_code(errno, std::generic_category());
    }
    if (error) {
        return std::unexpected(error);
    }
    ScratchCopy copy{fs::path(pattern)};
    error = copyContent(support, copy.folder(), 0, VelloryPaths(support, support).icons());
    if (!error) {
        fs::copy_file(settings, copy.folder() / settings.filename(),
                      fs::copy_options::overwrite_existing, error);
    }
    if (isFailure(error)) {
        return std::unexpected(error);
    }
    return copy;
}

ScratchCopy::ScratchCopy(fs::path folder) : folder_(std::move(folder)) {}

ScratchCopy::ScratchCopy(ScratchCopy&& other) noexcept
    : folder_(std::exchange(other.folder_, fs::path())) {}

ScratchCopy::~ScratchCopy() {
    if (!folder_.empty()) {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
}

} // namespace vellory
