// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVariantList>

#include "model/AppModel.h"

namespace vellory {

/// Installed apps whose names match, best first, for lists that one picks from: each with `app`,
/// `name`, `icon` and `added`, which is true of those in `taken`.
QVariantList foundApps(const AppModel& model, const QString& query,
                       const std::set<BundleID>& taken);

} // namespace vellory
