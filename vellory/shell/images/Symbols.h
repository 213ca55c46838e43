// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include <QString>

/// The symbols that can be drawn, by the names under which stored data, notices and buttons know
/// them, such as "camera.viewfinder". Drawings are the project's own (`symbols/`) or come from the
/// Lucide set (`symbols/lucide/`, with its licence).
namespace vellory::Symbols {

struct Symbol {
    std::string_view name;
    /// The file of the Lucide set; empty for one of our own, whose file has the symbol's name.
    std::string_view drawing;
    /// What else it is found by.
    std::string_view words = {};
};

/// Symbols that belong together.
struct Group {
    std::string_view title;
    std::vector<Symbol> symbols;
};

/// The symbols that a workspace may wear, in the order in which they are offered.
std::span<const Group> groups();

/// Whether there is a drawing under exactly that name.
bool isKnown(std::string_view name);

/// The resource with the drawing of `name`, which may be anything: a name that is not known loses
/// its last parts ("envelope.badge.fill", "envelope.badge", "envelope") until one is, and shows a
/// dashed square when none is.
QString file(const QString& name);

/// Whether the symbol is found by what was typed: the beginning of each word of it.
bool matches(const Symbol& symbol, const QString& typed);

} // namespace vellory::Symbols
