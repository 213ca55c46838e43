// SPDX-License-Identifier: Apache-2.0
#include "model/KeyCommand.h"

#include <algorithm>
#include <optional>

#include <QList>

namespace vellory {

namespace {

using GridNavigation::Move;
using Kind = KeyCommand::Kind;

/// Keys pressed together with these are commands, not text.
constexpr Qt::KeyboardModifiers commandModifiers =
    Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

/// Whether the key types something to search for. Joiners, which hold emoji together, count.
bool isText(const QString& text) {
    const auto characters = text.toUcs4();
    return !characters.isEmpty() && std::ranges::all_of(characters, [](char32_t character) {
        const QChar::Category category = QChar::category(character);
        return category != QChar::Other_Control && category != QChar::Other_Surrogate &&
               category != QChar::Separator_Line && category != QChar::Separator_Paragraph;
    });
}

KeyCommand withControl(Qt::Key key, int towardsRight) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return {.kind = Kind::activateNew};
    case Qt::Key_Space:
        return {.kind = Kind::select};
    case Qt::Key_A:
        return {.kind = Kind::selectAll};
    case Qt::Key_M:
        return {.kind = Kind::pickUp};
    case Qt::Key_G:
        return {.kind = Kind::hints};
    case Qt::Key_Left:
        return {.kind = Kind::turnPage, .pages = -towardsRight};
    case Qt::Key_Right:
        return {.kind = Kind::turnPage, .pages = towardsRight};
    default:
        return {};
    }
}

/// Where an arrow or its like takes the highlight; nothing for other keys.
std::optional<Move> moveOf(Qt::Key key, bool rightToLeft) {
    switch (key) {
    case Qt::Key_Left:
        return rightToLeft ? Move::on : Move::back;
    case Qt::Key_Right:
        return rightToLeft ? Move::back : Move::on;
    case Qt::Key_Up:
        return Move::up;
    case Qt::Key_Down:
        return Move::down;
    case Qt::Key_Home:
        return Move::first;
    case Qt::Key_End:
        return Move::last;
    case Qt::Key_PageUp:
        return Move::pageBack;
    case Qt::Key_PageDown:
        return Move::pageOn;
    default:
        return std::nullopt;
    }
}

} // namespace

KeyCommand KeyCommand::of(const KeyPress& press, bool rightToLeft) {
    if (press.key == Qt::Key_Escape) {
        return {.kind = Kind::back};
    }
    const Qt::KeyboardModifiers held = press.modifiers & commandModifiers;
    if (held == Qt::ControlModifier) {
        return withControl(press.key, rightToLeft ? -1 : 1);
    }
    if (held != Qt::NoModifier) {
        return {};
    }
    const bool shift = (press.modifiers & Qt::ShiftModifier) != 0;
    if (const auto move = moveOf(press.key, rightToLeft)) {
        return {.kind = shift ? Kind::extend : Kind::move, .move = *move};
    }
    switch (press.key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return {.kind = Kind::activate};
    case Qt::Key_Backspace:
        return {.kind = Kind::erase};
    case Qt::Key_F2:
        return {.kind = Kind::rename};
    case Qt::Key_Menu:
        return {.kind = Kind::menu};
    case Qt::Key_F10:
        return shift ? KeyCommand{.kind = Kind::menu} : KeyCommand{};
    case Qt::Key_Tab:
        return {.kind = Kind::aim};
    default:
        return isText(press.text) ? KeyCommand{.kind = Kind::type} : KeyCommand{};
    }
}

} // namespace vellory
