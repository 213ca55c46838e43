// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Board/Board.h"

namespace vellory::test {

/// The identifier with `number` in its last four bytes.
inline Uuid uuid(std::uint32_t number) {
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[15 - i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
    return Uuid(bytes);
}

/// Identifiers that count up from `first`.
inline UuidSource counting(std::uint32_t first) {
    return [next = first]() mutable { return uuid(next++); };
}

inline Tile app(std::string id) {
    return Tile(std::move(id));
}

inline Tile folder(std::uint32_t id, std::string title, std::vector<BundleID> apps) {
    return Tile(Folder{.id = uuid(id), .title = std::move(title), .apps = std::move(apps)});
}

inline Board board(std::vector<Tile> tiles) {
    Board out;
    out.tiles = std::move(tiles);
    return out;
}

/// So many apps: "a00", "a01" and so on.
inline std::vector<BundleID> numbered(int count) {
    std::vector<BundleID> ids;
    for (int i = 0; i < count; ++i) {
        ids.push_back((i < 10 ? "a0" : "a") + std::to_string(i));
    }
    return ids;
}

/// A board of these apps, in this order.
inline Board boardOf(const std::vector<BundleID>& apps) {
    return board(std::vector<Tile>(apps.begin(), apps.end()));
}

/// The tiles in one line that fails readably: "a [Work: b c] d".
inline std::string drawn(const Board& board) {
    std::string out;
    for (const Tile& tile : board.tiles) {
        out += out.empty() ? "" : " ";
        if (const Folder* inside = tile.folder()) {
            out += "[" + inside->title + ":";
            for (const BundleID& id : inside->apps) {
                out += " " + id;
            }
            out += "]";
        } else {
            out += *tile.app();
        }
    }
    return out;
}

} // namespace vellory::test
