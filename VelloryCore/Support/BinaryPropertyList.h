// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellory::PropertyList {

/// The table of objects inside a binary property list, looked at where it lies. Nothing in it is
/// trusted: an answer is nothing where the table is damaged.
///
/// `measure` comes first. Where it succeeds, no object that can be reached refers to itself.
class BinaryObjects {
  public:
    static constexpr std::string_view magic = "bplist00";

    struct Size {
        std::size_t depth = 0;
        std::size_t values = 0; ///< with shared objects counted wherever they occur
    };

    enum class Kind { other, text, list, dictionary };

    /// The references that a container holds: of a dictionary its keys and then its values.
    struct Children {
        std::size_t first = 0; ///< offset of the first reference
        std::size_t count = 0;
    };

    explicit BinaryObjects(std::string_view bytes) : bytes_(bytes) {}

    /// How large the tree of the top object is. Nothing for a table that is damaged or refers to
    /// itself. More than `maxObjects`, or nesting past 100,000, is reported
    /// without a closer look.
    std::optional<Size> measure(std::size_t maxObjects);

    std::size_t top() const { return top_; }
    Kind kind(std::size_t object) const;
    /// None for a plain value.
    std::optional<Children> children(std::size_t object) const;
    std::size_t child(const Children& children, std::size_t index) const;
    /// A text as it lies in the file, or converted into `storage`.
    std::optional<std::string_view> text(std::size_t object, std::string& storage) const;

  private:
    enum class State : unsigned char { untouched, open, done };

    std::uint64_t number(std::size_t offset, std::size_t size) const;
    std::optional<std::size_t> start(std::size_t object) const;
    /// The count in a marker, or in the number behind it; `offset` moves behind both.
    std::optional<std::size_t> count(std::size_t& offset) const;
    std::optional<Size> walk();

    std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t table_ = 0;
    std::size_t end_ = 0;
    std::size_t top_ = 0;
    std::vector<Size> sizes_;
    std::vector<State> states_;
};

} // namespace vellory::PropertyList
