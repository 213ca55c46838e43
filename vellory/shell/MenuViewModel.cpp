// SPDX-License-Identifier: Apache-2.0
#include "shell/MenuViewModel.h"

#include <utility>

#include <QVariantMap>

namespace vellory {

namespace {

QString kindName(MenuEntry::Kind kind) {
    switch (kind) {
    case MenuEntry::Kind::submenu:
        return "submenu";
    case MenuEntry::Kind::separator:
        return "separator";
    case MenuEntry::Kind::action:
        break;
    }
    return "action";
}

QVariantList listOf(const Menu& menu) {
    QVariantList list;
    for (const MenuEntry& entry : menu) {
        list.append(QVariantMap{{"kind", kindName(entry.kind)},
                                {"text", QString::fromStdString(entry.text)},
                                {"symbol", QString::fromStdString(entry.symbol)},
                                {"tint", QString::fromStdString(entry.tint)},
                                {"checked", entry.isChecked},
                                {"entries", listOf(entry.entries)}});
    }
    return list;
}

} // namespace

void MenuViewModel::show(Menu menu) {
    menu_ = std::move(menu);
    entries_ = listOf(menu_);
    Q_EMIT changed();
}

void MenuViewModel::trigger(const QList<int>& path) {
    const Menu* menu = &menu_;
    const MenuEntry* entry = nullptr;
    for (const int index : path) {
        if (index < 0 || std::cmp_greater_equal(index, menu->size())) {
            return;
        }
        entry = &(*menu)[static_cast<std::size_t>(index)];
        menu = &entry->entries;
    }
    if (entry == nullptr || !entry->action) {
        return;
    }
    // First closed: the action may open another menu, a panel or another app.
    const auto action = entry->action;
    close();
    action();
}

} // namespace vellory
