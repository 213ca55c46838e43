// SPDX-License-Identifier: Apache-2.0
#include "Support/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vellory::AtomicFile {

namespace fs = std::filesystem;

namespace {

/// What mkostemp(3) makes the names of: letters and digits stand in place of each X.
constexpr std::string_view temporaryPattern = ".vellory.XXXXXX";

bool isTemporaryName(std::string_view name) {
    const std::size_t fixed = temporaryPattern.find('X');
    return name.size() == temporaryPattern.size() &&
           name.starts_with(temporaryPattern.substr(0, fixed)) &&
           std::ranges::all_of(name.substr(fixed), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
           });
}

std::unexpected<std::error_code> lastError() {
    return std::unexpected(std::error_code(errno, std::generic_category()));
}

/// A file descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    int get() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }

    /// Closes now and tells whether that worked: some file systems report a full disk only here.
    bool close() { return ::close(std::exchange(fd_, -1)) == 0; }

  private:
    int fd_;
};

/// Removes a temporary file unless it was given its final name.
class TemporaryFile {
  public:
    explicit TemporaryFile(std::string path) : path_(std::move(path)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!kept_) {
            ::unlink(path_.c_str());
        }
    }

    const std::string& path() const { return path_; }
    void keep() { kept_ = true; }

  private:
    std::string path_;
    bool kept_ = false;
};

bool writeAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The file that `file` stands for once links are followed; itself when it does not exist yet.
fs::path target(const fs::path& file) {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(file, error))) {
        const fs::path resolved = fs::weakly_canonical(file, error);
        if (!error) {
            return resolved;
        }
    }
    return file;
}

/// Replaces `destination` itself; with `mode` in place of the one that it has.
std::expected<void, std::error_code> replace(const fs::path& destination, std::string_view content,
                                             std::optional<mode_t> mode) {
    const fs::path folder = destination.has_parent_path() ? destination.parent_path() : ".";

    // Not made of the file's own name, which may be as long as names can be.
    std::string pattern = (folder / temporaryPattern).string();
    Descriptor output(::mkostemp(pattern.data(), O_CLOEXEC));
    if (!output.isOpen()) {
        return lastError();
    }
    TemporaryFile temporary(std::move(pattern));

    struct stat existing{};
    if (!mode && ::stat(destination.c_str(), &existing) == 0) {
        mode = existing.st_mode & 07777U;
    }
    if (mode && ::fchmod(output.get(), *mode) != 0) {
        return lastError();
    }
    if (!writeAll(output.get(), content) || ::fsync(output.get()) != 0 || !output.close()) {
        return lastError();
    }
    if (::rename(temporary.path().c_str(), destination.c_str()) != 0) {
        return lastError();
    }
    temporary.keep();

    // The rename itself must survive a power cut. A file system that cannot flush a folder has
    // nothing better to offer, and the content is in place: that is not a failure to report.
    const Descriptor parent(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (parent.isOpen()) {
        ::fsync(parent.get());
    }
    return {};
}

fs::path unreadableCopy(const fs::path& file, int number) {
    fs::path copy = file;
    copy += number == 1 ? ".unreadable" : "." + std::to_string(number) + ".unreadable";
    return copy;
}

bool isTaken(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

bool holdTheSame(const fs::path& a, const fs::path& b) {
    std::error_code error;
    if (fs::equivalent(a, b, error)) {
        return true;
    }
    const auto content = read(a);
    return content && content == read(b);
}

/// Gives the content of `file` the name `copy` as well. A failure must not keep the program from
/// going on.
void copyBeside(const fs::path& file, const fs::path& copy) {
    // A copy that is cut short (a full disk) would be taken for a whole one: it gets its name when
    // it is complete. A second name for the file needs neither space nor permission to read, and
    // serves as well, because files are only ever replaced whole.
    fs::path unfinished = copy;
    unfinished += ".part";
    std::error_code error;
    fs::copy_file(file, unfinished, fs::copy_options::overwrite_existing, error);
    if (!error) {
        fs::rename(unfinished, copy, error);
    }
    if (error) {
        std::error_code ignored;
        fs::remove(unfinished, ignored);
        fs::create_hard_link(fs::canonical(file, ignored), copy, ignored);
    }
}

} // namespace

std::expected<std::string, std::error_code> read(const fs::path& file, std::size_t limit) {
    // O_NONBLOCK: opening a pipe that somebody put in the file's place must not wait for a writer.
    const Descriptor input(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!input.isOpen()) {
        return lastError();
    }
    struct stat info{};
    if (::fstat(input.get(), &info) != 0) {
        return lastError();
    }
    if (!S_ISREG(info.st_mode)) {
        return std::unexpected(std::make_error_code(std::errc::invalid_argument));
    }
    if (std::cmp_greater(info.st_size, limit)) {
        return std::unexpected(std::make_error_code(std::errc::file_too_large));
    }
    std::string content(static_cast<std::size_t>(info.st_size), '\0');
    std::size_t filled = 0;
    while (filled < content.size()) {
        const ssize_t got = ::read(input.get(), content.data() + filled, content.size() - filled);
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return lastError();
        }
        if (got == 0) {
            break;
        }
        filled += static_cast<std::size_t>(got);
    }
    content.resize(filled);
    return content;
}

std::expected<void, std::error_code> write(const fs::path& file, std::string_view content) {
    return replace(target(file), content, std::nullopt);
}

std::expected<void, std::error_code> writeProgram(const fs::path& file, std::string_view content) {
    constexpr mode_t runnableByAll = 0755;
    return replace(file, content, runnableByAll);
}

std::expected<void, std::error_code> createFolder(const fs::path& folder) {
    if (folder.empty()) {
        return {}; // the parent of a plain file name: where the program stands
    }
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        return std::unexpected(error);
    }
    return {};
}

void keepUnreadable(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        return;
    }
    int newest = mostUnreadableCopies;
    while (newest > 0 && !isTaken(unreadableCopy(file, newest))) {
        --newest;
    }
    if (newest > 0 && holdTheSame(file, unreadableCopy(file, newest))) {
        return;
    }
    if (newest == mostUnreadableCopies) {
        // The second oldest goes; each newer one takes the number before its own.
        for (int number = 3; number <= mostUnreadableCopies; ++number) {
            fs::rename(unreadableCopy(file, number), unreadableCopy(file, number - 1), error);
        }
        --newest;
    }
    copyBeside(file, unreadableCopy(file, newest + 1));
}

void removeUnfinished(const fs::path& folder, Date before) {
    std::error_code error;
    std::vector<fs::path> unfinished;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat info{};
        if (isTemporaryName(entry->path().filename().string()) &&
            ::lstat(entry->path().c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
            Date::since1970(static_cast<double>(info.st_mtim.tv_sec)) < before) {
            unfinished.push_back(entry->path());
        }
    }
    for (const fs::path& file : unfinished) {
        fs::remove(file, error);
    }
}

} // namespace vellory::AtomicFile
