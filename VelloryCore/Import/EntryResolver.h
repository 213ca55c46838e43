// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Import/RivalImport.h"

namespace vellory::RivalImport {

/// `resolve` for the many entries of one import, asking the resolver `maxLookups` times at most;
/// after that only identifiers are understood.
class EntryResolver {
  public:
    explicit EntryResolver(const Resolver& resolver);
    EntryResolver(const EntryResolver&) = delete;
    EntryResolver& operator=(const EntryResolver&) = delete;

    std::optional<BundleID> resolve(std::string_view text) const;

  private:
    mutable int lookupsLeft_ = maxLookups;
    Resolver counted_;
};

} // namespace vellory::RivalImport
