// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Support/Json.h"

namespace vellory::json {

/// Reads a JSON text from front to back straight into records, without a tree in between: for the
/// files that are large or read often. Reads several times faster than `decode` and is as strict:
/// the whole text must be one well-formed document in UTF-8. A number that no double can hold is a
/// fault.
///
///     json::Reader reader(text);
///     std::vector<std::string> names;
///     for (reader.beginArray(); reader.nextElement();) {
///         reader.read(names.emplace_back());
///     }
///     if (!reader.finish()) … // not JSON, or another shape: what was read so far means nothing
///
/// The first fault, be it in the text or in what was asked of it, makes every further call fail, so
/// that loops end and one question at the end is enough.
class Reader {
  public:
    /// Of `text`, which must outlive the reader. Past `mostValues` values (keys do not count) the
    /// text counts as faulty: it bounds what the records can take up.
    explicit Reader(std::string_view text, std::size_t mostValues);

    /// Enters an array; `nextElement` then tells before each element whether there is one, and
    /// leaves the array after the last.
    bool beginArray();
    bool nextElement();

    /// Enters an object; `nextKey` then gives the key of each member, whose value is to be read or
    /// skipped, and nothing after the last. The key is valid until the next call.
    bool beginObject();
    std::optional<std::string_view> nextKey();

    // One value of the type wanted. Whole numbers may be spelled 3.0, as other writers do.
    bool read(std::string& out);
    bool read(double& out);
    bool read(int& out);
    /// Null is nothing.
    bool read(std::optional<std::string>& out);

    /// Passes over one value of any type.
    bool skip();

    /// Makes the reading fail: for values that are well-formed but make no sense.
    bool fail();

    /// Whether all was read without fault and nothing but white space is left.
    bool finish();

    std::size_t valuesRead() const { return values_; }

  private:
    void skipSpace();
    bool accept(char c);
    bool countValue();
    bool begin(char opening);
    bool next(char closing);
    std::optional<std::string_view> string();
    std::optional<std::string_view> stringWithEscapes(const char* start);
    bool appendEscape();
    std::optional<char32_t> hexUnit();
    std::optional<std::string_view> number();

    const char* at_;
    const char* end_;
    std::size_t maxValues_;
    std::size_t values_ = 0;
    bool failed_ = false;
    int depth_ = 0;
    std::array<bool, maxDepth> isFirst_{};
    std::string scratch_;
};

} // namespace vellory::json
