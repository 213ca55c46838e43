// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "Board/Board.h"

namespace vellory {

/// The board that importing a layout leads to: the layout's grid without apps that are not
/// installed, followed by installed apps that it does not name. What the user hid, renamed and gave
/// icons of their own stays, because a layout says nothing of it.
///
/// The current board itself when the import would change nothing but the identity and looks of its
/// folders, which a layout does not know either: importing twice changes nothing.
Board importedBoard(const Layout& layout, const Board& current,
                    const std::vector<BundleID>& installed, const UuidSource& uuids);

} // namespace vellory
