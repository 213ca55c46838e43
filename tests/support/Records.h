// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Support/Json.h"

namespace vellory::test {

/// Damages a stored record in one place after the other and asks who reads it: no value may be of
/// another type, and no member missing or null, but for those named.
class StrictReading {
  public:
    using Keys = std::set<std::string>;
    using IsRead = std::function<bool(const std::string& text)>;

    /// Members under a key of `optional` may be missing or null; those of members under a key of
    /// `maps` may be missing.
    StrictReading(IsRead isRead, Keys optional, Keys maps)
        : isRead_(std::move(isRead)), optional_(std::move(optional)), maps_(std::move(maps)) {}

    void expectOf(const std::string& honest) {
        whole_ = json::Value::parse(honest);
        expectRead(true, "as it is");
        damage(whole_, "the whole");
    }

  private:
    void expectRead(bool expected, const std::string& what) const {
        EXPECT_EQ(isRead_(whole_.dump()), expected) << what << ": " << whole_.dump();
    }

    /// Damages `value`, a part of `whole_`, and what is in it; all stands as before afterwards.
    void damage(json::Value& value, const std::string& name) {
        const json::Value kept = value;
        for (const json::Value& other : {json::Value("text"), json::Value(7), json::Value(true)}) {
            if (other.type() != kept.type() && !(other.is_number() && kept.is_number())) {
                value = other;
                expectRead(false, name + " of another type");
            }
        }
        if (kept.is_number_integer()) {
            value = 0.5;
            expectRead(false, name + " with a fraction");
        }
        value = kept;
        if (kept.is_array()) {
            for (json::Value& element : value) {
                damage(element, name + "'s element");
            }
        } else if (kept.is_object()) {
            for (const auto& [key, member] : kept.items()) {
                damage(value[key], key);
                value[key] = nullptr;
                expectRead(optional_.contains(key), key + " null");
                value.erase(key);
                expectRead(optional_.contains(key) || maps_.contains(name), key + " missing");
                value[key] = member;
            }
        }
    }

    IsRead isRead_;
    Keys optional_;
    Keys maps_;
    json::Value whole_;
};

/// The same for a record that is decoded from the whole text.
template <class Record>
void expectStrictReading(const std::string& honest, StrictReading::Keys optional = {},
                         StrictReading::Keys maps = {}) {
    const auto isRead = [](const std::string& text) {
        return json::decode<Record>(text).has_value();
    };
    StrictReading(isRead, std::move(optional), std::move(maps)).expectOf(honest);
}

} // namespace vellory::test
