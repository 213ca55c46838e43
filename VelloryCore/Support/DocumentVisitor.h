// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace vellory {

/// Is told, in order, what a JSON text or property list holds. Of JSON no tree is built for it: for
/// documents of other programs, which may be far larger than what is wanted from them.
///
/// Every begin has its end as long as the document is well formed. Any event may return false to
/// stop the reading.
class DocumentVisitor {
  public:
    virtual ~DocumentVisitor() = default;

    virtual bool text(std::string_view value) = 0;
    /// A value that is neither text nor container: a number, a date, bytes, nothing.
    virtual bool other() = 0;
    virtual bool beginList() = 0;
    virtual bool endList() = 0;
    virtual bool beginDictionary() = 0;
    /// The key of the value that comes next. A key may come again: the later value counts.
    virtual bool key(std::string_view name) = 0;
    virtual bool endDictionary() = 0;
};

enum class VisitResult {
    complete,
    malformed, ///< found out at any point: what was visited before does not count
    stopped    ///< the visitor had enough
};

} // namespace vellory
