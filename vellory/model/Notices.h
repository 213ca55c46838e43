// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include "model/Notice.h"

namespace vellory {

/// Where everything that has something to tell the user says so; whoever shows notices listens.
class Notices : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    void post(const Notice& notice) { Q_EMIT posted(notice); }

  Q_SIGNALS:
    void posted(const vellory::Notice& notice);
};

} // namespace vellory
