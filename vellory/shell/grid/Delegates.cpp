// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/Delegates.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlInfo>
#include <QQuickItem>

namespace vellory {

QQuickItem* makeDelegate(QQmlComponent& component, const QVariantMap& properties,
                         QQuickItem& parent, const QQuickItem& owner) {
    QObject* object = component.beginCreate(component.creationContext());
    auto* item = qobject_cast<QQuickItem*>(object);
    if (item != nullptr) {
        // Before its bindings are: they depend on the window and its screen.
        item->setParentItem(&parent);
        item->setParent(&parent);
        component.setInitialProperties(item, properties);
    }
    component.completeCreate();
    if (item == nullptr || component.isError()) {
        for (const QQmlError& error : component.errors()) {
            qmlWarning(&owner) << error.toString();
        }
        delete object;
        return nullptr;
    }
    return item;
}

} // namespace vellory
