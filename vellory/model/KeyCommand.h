// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "model/GridNavigation.h"

namespace vellory {

/// A key that was pressed, as the window system tells it.
struct KeyPress {
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text = {}; ///< what it types
};

/// What a key means on the grid.
struct KeyCommand {
    enum class Kind {
        none, ///< nothing: the key is for somebody else
        back,
        activate,
        activateNew, ///< in a new window or instance
        select,      ///< takes the highlighted app into the selection, or out of it
        selectAll,
        extend,   ///< the selection, by a `move` of the highlight
        rename,   ///< the highlighted tile, in its place
        menu,     ///< shows what can be done with the highlighted tile
        pickUp,   ///< moves the highlighted tile with the keys from now on
        aim,      ///< Tab: on to the next thing; for a tile on its way, the tile it may go into
        hints,    ///< shows the letters that activate tiles
        move,     ///< the highlight, as `move` says
        turnPage, ///< one page on (`pages` 1) or back (-1)
        erase,    ///< the last character typed
        type      ///< what the key types goes into the search
    };

    Kind kind = Kind::none;
    GridNavigation::Move move = GridNavigation::Move::on;
    int pages = 0;

    /// The arrows left and right follow the direction of reading.
    static KeyCommand of(const KeyPress& press, bool rightToLeft);

    friend bool operator==(const KeyCommand&, const KeyCommand&) = default;
};

} // namespace vellory
