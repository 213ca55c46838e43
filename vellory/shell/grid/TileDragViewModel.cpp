// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/TileDragViewModel.h"

namespace vellory {

TileDragViewModel::TileDragViewModel(LauncherState& state, QObject* parent)
    : QObject(parent), state_(state) {
    connect(&drag(), &TileDrag::activeChanged, this, [this] {
        if (!isActive()) {
            byPointer_ = false;
        }
        Q_EMIT activeChanged();
    });
    connect(&drag(), &TileDrag::changed, this, &TileDragViewModel::changed);
}

QString TileDragViewModel::tileId() const {
    return isActive() ? QString::fromStdString(drag().tile().id()) : QString();
}

bool TileDragViewModel::begin(const QString& tileId) {
    byPointer_ = true;
    if (!drag().begin(tileId.toStdString())) {
        byPointer_ = isActive() && byPointer_;
        return false;
    }
    return true;
}

} // namespace vellory
