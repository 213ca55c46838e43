// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/Delegates.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlInfo>
#include <QQuickItem>

namespace vellory {

QQuickItem* makeDelegate(QQmlComponent& component, const QVariantMap& properties,
                         QQuickItem& parent, const QQuickItem& owner) {
    QObject* object =
        component.createWithInitialProperties(properties, component.creationContext());
    auto* item = qobject_cast<QQuickItem*>(object);
    if (item == nullptr) {
        delete object;
        for (const QQmlError& error : component.errors()) {
            qmlWarning(&owner) << error.toString();
        }
        return nullptr;
    }
    item->setParentItem(&parent);
    item->setParent(&parent);
    return item;
}

} // namespace vellory
