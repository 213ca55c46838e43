// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellory::test {

/// Writes binary property lists object by object, also such as no honest program writes: with
/// values that are shared, that hold themselves, or that are not there.
class BinaryPlist {
  public:
    using Index = std::uint32_t;

    Index add(std::string object) {
        objects_.push_back(std::move(object));
        return static_cast<Index>(objects_.size() - 1);
    }

    Index addBoolean(bool value) { return add(std::string(1, value ? '\x09' : '\x08')); }
    Index addInteger(std::uint64_t value) { return add('\x13' + number(value, 8)); }
    Index addUid(std::uint32_t index) { return add('\x83' + number(index, 4)); }
    Index addData(std::string_view bytes) {
        return add(marker(0x4, bytes.size()) + std::string(bytes));
    }
    Index addText(std::string_view ascii) {
        return add(marker(0x5, ascii.size()) + std::string(ascii));
    }
    Index addArray(const std::vector<Index>& items) {
        return add(marker(0xA, items.size()) + references(items));
    }
    Index addDictionary(const std::vector<std::pair<Index, Index>>& members) {
        std::vector<Index> keys;
        std::vector<Index> values;
        for (const auto& [key, value] : members) {
            keys.push_back(key);
            values.push_back(value);
        }
        return add(marker(0xD, members.size()) + references(keys) + references(values));
    }

    /// The whole list, with `top` as its root.
    std::string bytes(Index top) const {
        std::string out = "bplist00";
        std::string offsets;
        for (const std::string& object : objects_) {
            offsets += number(out.size(), 4);
            out += object;
        }
        const std::size_t table = out.size();
        return out + offsets + std::string(6, '\0') + "\x04\x04" + number(objects_.size(), 8) +
               number(top, 8) + number(table, 8);
    }

    static std::string number(std::uint64_t value, int size) {
        std::string out;
        for (int i = size - 1; i >= 0; --i) {
            out.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
        }
        return out;
    }

  private:
    static std::string marker(unsigned kind, std::size_t count) {
        if (count < 15) {
            return {static_cast<char>(kind << 4U | count)};
        }
        return std::string{static_cast<char>(kind << 4U | 0x0FU)} + '\x12' + number(count, 4);
    }

    static std::string references(const std::vector<Index>& items) {
        std::string out;
        for (const Index item : items) {
            out += number(item, 4);
        }
        return out;
    }

    std::vector<std::string> objects_;
};

} // namespace vellory::test
