// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

/// The documents that an app opened last, from the lists that the system keeps for each app.
namespace vellory::RecentDocuments {

/// Where the lists are in a home folder.
std::filesystem::path folder(const std::filesystem::path& home);

/// Up to `limit` documents of an app, in the order in which its list has them; none for an app
/// without a list, or with one that cannot be read.
std::vector<std::filesystem::path> list(std::string_view app, std::size_t limit,
                                        const std::filesystem::path& folder);

/// The same from the data of one list: a keyed archive whose root holds "items", each with bookmark
/// data or a file link. Items that name no file are left out.
std::vector<std::filesystem::path> urls(std::string_view archive, std::size_t limit);

} // namespace vellory::RecentDocuments
