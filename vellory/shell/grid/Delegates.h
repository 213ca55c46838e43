// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVariantMap>

class QQmlComponent;
class QQuickItem;

namespace vellory {

/// Makes an item from a component, with values for its required properties, as a child of `parent`
/// that goes with it. Null, and said in the log of `owner`, where the component does not allow it.
QQuickItem* makeDelegate(QQmlComponent& component, const QVariantMap& properties,
                         QQuickItem& parent, const QQuickItem& owner);

} // namespace vellory
