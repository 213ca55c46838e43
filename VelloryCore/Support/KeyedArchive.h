// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/PropertyList.h"

namespace vellory {

/// A keyed archive: a property list that holds a graph of objects as a flat list, in which they
/// refer to each other by their places. The system's own lists come in this form.
///
/// Every step follows one reference, so a graph that runs in circles, or points at objects that are
/// not there, gives nothing and costs nothing. Values are valid for as long as the archive.
class KeyedArchive {
  public:
    using Value = PropertyList::Value;

    /// Nothing when `bytes` hold no keyed archive, or one far larger than the system writes.
    static std::optional<KeyedArchive> parse(std::string_view bytes);

    /// The archived object, stored under "root".
    const Value* root() const;

    /// What `object`, a dictionary or any other object with named fields, holds under `key`.
    const Value* member(const Value* object, std::string_view key) const;

    /// The elements of an archived list or set, at most `limit`; those that are missing are null.
    std::vector<const Value*> elements(const Value* list, std::size_t limit) const;

    /// The text or the bytes of an archived string or data object.
    const std::string* string(const Value* object) const;
    const std::string* data(const Value* object) const;

  private:
    explicit KeyedArchive(std::unique_ptr<const Value> archive) : archive_(std::move(archive)) {}

    /// The object that a reference stands for; a value that is no reference stands for itself.
    const Value* resolved(const Value* value) const;
    const PropertyList::Array* list(const Value* object, std::string_view key) const;

    std::unique_ptr<const Value> archive_; ///< so that values stay in place when this moves
};

} // namespace vellory
