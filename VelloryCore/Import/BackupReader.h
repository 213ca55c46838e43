// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "Import/RivalImport.h"

namespace vellory::RivalImport {

/// The grid in the bytes of a backup: JSON or, failing that, a property list, of no fixed shape.
///
/// A text is an app if it resolves. A list is its elements in order. A dictionary is an app if one
/// of the keys that identify apps resolves; otherwise, if one of the keys for children holds a
/// list, a folder of what is in it. Everything else is passed over, and so are folders without
/// apps.
///
/// The grid cannot nest folders. So a dictionary on the grid that itself holds folders is a page of
/// its own, and the document's outermost dictionary is the grid unless it has a name and nothing
/// but apps. What is left stands on one page.
///
/// Memory stays within a small multiple of the bytes whatever they hold. A backup that nests deeper
/// than 256 levels, lists more apps than fit in 96 MB (600,000 and more) or, as a property list,
/// holds more than 600,000 values is unreadable.
Result layoutInBackup(std::string_view bytes, const Resolver& resolver);

} // namespace vellory::RivalImport
