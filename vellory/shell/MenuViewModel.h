// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/MenuEntry.h"

namespace vellory {

/// The menu that is open, as the views see it. Each entry has `kind` ("action", "submenu" or
/// "separator"), `text`, `symbol`, `tint`, `checked` and `entries`.
class MenuViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(OpenMenu)
    QML_UNCREATABLE("There is one menu, the launcher's")

    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QVariantList entries READ entries NOTIFY changed)

  public:
    using QObject::QObject;

    bool isOpen() const { return !menu_.empty(); }
    const QVariantList& entries() const { return entries_; }
    void show(Menu menu);

    Q_INVOKABLE void close() { show({}); }
    /// Does what an entry says and closes the menu. `path` leads to it: an index for each menu.
    Q_INVOKABLE void trigger(const QList<int>& path);

  Q_SIGNALS:
    void changed();

  private:
    Menu menu_;
    QVariantList entries_;
};

} // namespace vellory
