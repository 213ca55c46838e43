// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/GLibPointers.h"

/// Files as links ("file:///a%20b") and back.
namespace vellory::FileLinks {

/// Nothing for a relative path.
inline std::optional<std::string> linkTo(const std::filesystem::path& file) {
    const glib::Chars link(g_filename_to_uri(file.c_str(), nullptr, nullptr));
    return link == nullptr ? std::nullopt : std::optional<std::string>(link.get());
}

/// Nothing for a link to anything but a file of this machine.
inline std::optional<std::filesystem::path> fileOf(const std::string& link) {
    char* name = nullptr;
    const glib::Chars file(g_filename_from_uri(link.c_str(), &name, nullptr));
    const glib::Chars host(name);
    const bool isHere =
        host == nullptr || *host.get() == '\0' || g_ascii_strcasecmp(host.get(), "localhost") == 0;
    return file == nullptr || !isHere ? std::nullopt
                                      : std::optional<std::filesystem::path>(file.get());
}

} // namespace vellory::FileLinks
