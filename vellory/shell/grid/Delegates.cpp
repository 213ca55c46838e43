// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/Delegates.h"

#include <memory>

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlInfo>
#include <QQuickItem>

namespace vellory {

QQuickItem* makeDelegate(QQmlComponent& component, const QVariantMap& properties,
                         QQuickItem& parent, const QQuickItem& owner) {
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties(properties, component.creationContext()));
    auto* item = qobject_cast<QQuickItem*>(object.get());
    if (item == nullptr) {
        for (const QQmlError& error : component.errors()) {
            qmlWarning(&owner) << error.toString();
        }
        return nullptr;
    }
    object.release();
    item->setParentItem(&parent);
    item->setParent(&parent);
    return item;
}

} // namespace vellory
