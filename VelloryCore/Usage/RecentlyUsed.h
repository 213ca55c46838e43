// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Date.h"
#include "Support/Xml.h"

/// The desktop's own list of recently used files, "recently-used.xbel": each file with the apps
/// that opened it and when.
namespace vellory::RecentlyUsed {

/// How an app entered itself in the list. Which installed app that is, the desktop must tell.
struct App {
    std::string name;    ///< as it calls itself
    std::string program; ///< the file name of the program that opens a file in it again

    friend auto operator<=>(const App&, const App&) = default;
};

struct Document {
    std::filesystem::path file; ///< absolute, without "..", of this machine
    Date at;                    ///< when the app used it last

    friend bool operator==(const Document&, const Document&) = default;
};

struct Uses {
    /// When the app used any file last, local or not.
    Date last;
    /// The latest first; of two used at one time the one that is listed later first.
    std::vector<Document> documents;

    friend bool operator==(const Uses&, const Uses&) = default;
};

using Summary = std::map<App, Uses>;

/// Documents kept for each app.
inline constexpr std::size_t defaultDocuments = 20;
/// Apps that are told apart; who comes later is left out.
inline constexpr std::size_t mostApps = 4096;
/// Larger files are not read.
inline constexpr std::size_t largestFile = 256U * 1024U * 1024U;

/// Reads a list as a stream, in memory that depends on the apps and not on the size of the file.
/// Files that are marked private are left out of `documents`. A list that is damaged anywhere or
/// declares entities gives nothing of it.
std::expected<Summary, Xml::Error> read(const std::filesystem::path& file,
                                        std::size_t mostDocuments = defaultDocuments);
/// The same from the text of a list.
std::expected<Summary, Xml::Error> parse(std::string_view text,
                                         std::size_t mostDocuments = defaultDocuments);

} // namespace vellory::RecentlyUsed
