// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include <QString>

/// Stored text made fit for views.
namespace vellory {

QString toQString(std::string_view text);

/// A name as one line: line breaks and other control characters become spaces, and a name without
/// anything to see becomes "Workspace". Marks of the direction of writing cannot reach out of it.
QString oneLine(const std::string& name);

/// A path as people write it, below their own folder as "~".
QString shortPath(const QString& path);

} // namespace vellory
