// SPDX-License-Identifier: Apache-2.0
// Ranks names by a query: names on standard input, one on a line, and matches on standard output,
// best first. What `compare-filter` holds against another filter.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Search/PreparedNames.h"

namespace {

/// All of standard input: mapped when it is a file, else read into memory. Lives as long as the
/// program.
std::string_view standardInput() {
    struct stat status{};
    if (::fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* mapped =
            ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, STDIN_FILENO, 0);
        if (mapped != MAP_FAILED) {
            return {static_cast<const char*>(mapped), size};
        }
    }
    static std::string text;
    std::size_t size = 0;
    for (ssize_t count = 1; count > 0; size += static_cast<std::size_t>(count)) {
        text.resize(size + (1U << 20U) + size / 2);
        count = ::read(STDIN_FILENO, text.data() + size, text.size() - size);
        if (count < 0) {
            break;
        }
    }
    text.resize(size);
    return text;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: filter QUERY < names\n", stderr);
        return 2;
    }
    const std::string_view input = standardInput();
    std::vector<std::size_t> lines; // where each begins
    vellory::FuzzySearch::PreparedNames names;
    const auto count = static_cast<std::size_t>(std::ranges::count(input, '\n')) + 1;
    names.reserve(count, input.size());
    lines.reserve(count);
    for (std::size_t begin = 0; begin < input.size();) {
        const auto* end =
            static_cast<const char*>(std::memchr(input.data() + begin, '\n', input.size() - begin));
        const std::size_t length = end != nullptr
                                       ? static_cast<std::size_t>(end - (input.data() + begin))
                                       : input.size() - begin;
        lines.push_back(begin);
        names.add(input.substr(begin, length));
        begin += length + 1;
    }
    std::string out;
    const auto matches = names.rank(argv[1]);
    for (const auto& match : matches) {
        const std::size_t begin = lines[match.index];
        const std::size_t next =
            match.index + 1 < lines.size() ? lines[match.index + 1] : input.size();
        out.append(input.substr(begin, next - begin));
        if (out.back() != '\n') {
            out.push_back('\n'); // the last line may lack it
        }
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
    return matches.empty() ? 1 : 0;
}
