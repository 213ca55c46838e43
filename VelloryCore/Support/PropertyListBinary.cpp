// SPDX-License-Identifier: Apache-2.0
#include "Support/PropertyListReaders.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <optional>
#include <utility>

#include <unicode/unistr.h>

#include "Support/Text.h"

namespace vellory::PropertyList {

namespace {

/// A list is a table of objects; containers name their members by their numbers in it. One object
/// may so stand in many places, and a short list spell a tree that fills any memory. Therefore the
/// tree is measured first, without recursion and each object once, and built only when it fits.
class BinaryReader {
  public:
    BinaryReader(std::string_view bytes, const Limits& limits) : bytes_(bytes), limits_(limits) {}

    std::expected<Value, Error> read() {
        const auto top = readTrailer();
        if (!top) {
            return std::unexpected(Error::malformed);
        }
        if (count_ > limits_.values) { // measuring takes memory for each of them
            return std::unexpected(Error::tooLarge);
        }
        sizes_.resize(count_);
        states_.resize(count_, State::untouched);
        if (!measure(*top)) {
            return std::unexpected(Error::malformed);
        }
        const Size& size = sizes_[*top];
        if (size.depth > limits_.depth || size.values > limits_.values ||
            size.bytes > limits_.bytes) {
            return std::unexpected(Error::tooLarge);
        }
        Value value;
        if (!build(*top, value)) {
            return std::unexpected(Error::malformed);
        }
        return value;
    }

  private:
    /// What the high half of an object's first byte says it is.
    enum class Kind : unsigned char {
        simple = 0x0,
        integer = 0x1,
        real = 0x2,
        date = 0x3,
        data = 0x4,
        ascii = 0x5,
        utf16 = 0x6,
        uid = 0x8,
        array = 0xA,
        orderedSet = 0xB,
        set = 0xC,
        dictionary = 0xD
    };

    struct Object {
        Kind kind{};
        /// Bytes of a number or of data, units of a text, references of a container.
        std::size_t count = 0;
        std::size_t content = 0; ///< offset
        std::size_t size = 0;    ///< of the content, in bytes

        bool isContainer() const { return kind >= Kind::array; }
    };

    /// A tree, shared objects counted wherever they occur. Sums stop at `most`.
    struct Size {
        std::size_t depth = 0;
        std::size_t values = 1;
        std::size_t bytes = 0;
    };

    enum class State : unsigned char { untouched, open, done };

    struct Frame {
        std::size_t index = 0;
        Object object;
        std::size_t next = 0;
    };

    std::uint64_t number(std::size_t offset, std::size_t size) const {
        std::uint64_t value = 0;
        for (const char byte : bytes_.substr(offset, size)) {
            value = value << 8U | static_cast<unsigned char>(byte);
        }
        return value;
    }

    /// Reads the last 32 bytes, which say where everything is. Gives the top object.
    std::optional<std::size_t> readTrailer() {
        constexpr std::size_t trailerSize = 32;
        if (bytes_.size() < binaryMagic.size() + trailerSize) {
            return std::nullopt;
        }
        end_ = bytes_.size() - trailerSize;
        offsetSize_ = number(end_ + 6, 1);
        referenceSize_ = number(end_ + 7, 1);
        const std::uint64_t count = number(end_ + 8, 8);
        const std::uint64_t top = number(end_ + 16, 8);
        const std::uint64_t table = number(end_ + 24, 8);
        const auto isSize = [](std::size_t size) { return size >= 1 && size <= 8; };
        if (!isSize(offsetSize_) || !isSize(referenceSize_) || table > end_ ||
            count > (end_ - table) / offsetSize_ || top >= count) {
            return std::nullopt;
        }
        table_ = table;
        count_ = count;
        return top;
    }

    std::optional<Object> objectAt(std::size_t index) const {
        const std::uint64_t start = number(table_ + index * offsetSize_, offsetSize_);
        if (start >= table_) {
            return std::nullopt;
        }
        std::size_t offset = start;
        const std::uint64_t marker = number(offset++, 1);
        Object object{.kind = static_cast<Kind>(marker >> 4U), .count = marker & 0x0FU};
        std::size_t unit = 1;
        switch (object.kind) {
        case Kind::simple: // the value is the marker itself
            object.content = offset - 1;
            object.size = 1;
            return object;
        case Kind::integer:
        case Kind::real:
        case Kind::date:
            object.count = std::size_t{1} << object.count;
            break;
        case Kind::uid:
            ++object.count;
            break;
        case Kind::data:
        case Kind::ascii:
        case Kind::utf16:
        case Kind::array:
        case Kind::orderedSet:
        case Kind::set:
        case Kind::dictionary:
            if (object.count == 0x0F) { // the count follows as an integer
                const std::uint64_t width = offset < table_ ? number(offset++, 1) : 0;
                const std::size_t size = std::size_t{1} << (width & 0x0FU);
                if (width >> 4U != 1 || size > 8 || size > table_ - offset) {
                    return std::nullopt;
                }
                object.count = number(offset, size);
                offset += size;
            }
            unit = object.isContainer() ? referenceSize_ : 1;
            unit *= object.kind == Kind::utf16 || object.kind == Kind::dictionary ? 2 : 1;
            break;
        default:
            return std::nullopt;
        }
        if (object.count > (table_ - offset) / unit) {
            return std::nullopt;
        }
        object.content = offset;
        object.size = object.count * unit;
        return object;
    }

    std::size_t references(const Object& object) const {
        return object.isContainer() ? object.size / referenceSize_ : 0;
    }

    /// The object that a container names at `position`; of a dictionary the keys come first.
    std::optional<std::size_t> reference(const Object& container, std::size_t position) const {
        const std::uint64_t index =
            number(container.content + position * referenceSize_, referenceSize_);
        return index < states_.size() ? std::optional<std::size_t>(index) : std::nullopt;
    }

    /// Fills `sizes_` for everything below `top`. False for a table that is damaged or whose
    /// objects hold themselves.
    bool measure(std::size_t top) {
        std::vector<Frame> open;
        const auto enter = [&](std::size_t index) {
            const auto object = objectAt(index);
            if (!object) {
                return false;
            }
            states_[index] = State::open;
            sizes_[index] = {.depth = object->isContainer() ? 1U : 0U, .bytes = object->size};
            open.push_back({index, *object, 0});
            return true;
        };
        if (!enter(top)) {
            return false;
        }
        while (!open.empty()) {
            Frame& frame = open.back();
            if (frame.next == references(frame.object)) {
                const std::size_t finished = frame.index;
                states_[finished] = State::done;
                open.pop_back();
                if (!open.empty()) {
                    add(sizes_[open.back().index], sizes_[finished]);
                }
                continue;
            }
            const auto member = reference(frame.object, frame.next++);
            if (!member || states_[*member] == State::open) {
                return false;
            }
            if (states_[*member] == State::done) {
                add(sizes_[frame.index], sizes_[*member]);
            } else if (!enter(*member)) {
                return false;
            }
        }
        return true;
    }

    static void add(Size& whole, const Size& part) {
        constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / 4;
        whole.depth = std::max(whole.depth, part.depth + 1);
        whole.values = std::min(most, whole.values + part.values);
        whole.bytes = std::min(most, whole.bytes + part.bytes);
    }

    /// Recursion is bounded: the depth has been measured. False for an object that is damaged.
    bool build(std::size_t index, Value& out) const {
        const auto object = objectAt(index);
        if (!object) {
            return false;
        }
        const std::string_view content = bytes_.substr(object->content, object->size);
        switch (object->kind) {
        case Kind::simple:
            return simple(object->count, out);
        case Kind::integer:
            return integer(*object, out);
        case Kind::real:
            return real(*object, out);
        case Kind::date:
            out.content = Date::since2001(std::bit_cast<double>(number(object->content, 8)));
            return object->size == 8;
        case Kind::uid:
            out.content = Uid{number(object->content, object->size)};
            return object->size <= 8;
        case Kind::data:
            out.content = Data{std::string(content)};
            return true;
        case Kind::ascii:
            out.content = Text::repairedUtf8(content);
            return true;
        case Kind::utf16:
            out.content = utf8(*object);
            return true;
        case Kind::dictionary:
            return dictionary(*object, out.content.emplace<Dictionary>());
        default:
            return array(*object, out.content.emplace<Array>());
        }
    }

    static bool simple(std::size_t value, Value& out) {
        switch (value) {
        case 0x0: // null: no value of ours
            out.content = std::string();
            return true;
        case 0x8:
        case 0x9:
            out.content = value == 0x9;
            return true;
        default:
            return false;
        }
    }

    /// Up to four bytes are unsigned, eight are signed; of sixteen the lower eight count.
    bool integer(const Object& object, Value& out) const {
        const std::size_t size = std::min<std::size_t>(8, object.size);
        const std::size_t lowest = object.content + object.size - size;
        out.content = static_cast<std::int64_t>(number(lowest, size));
        return object.size <= 16;
    }

    bool real(const Object& object, Value& out) const {
        const std::uint64_t bits = number(object.content, object.size);
        out.content = object.size == 4
                          ? double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))}
                          : std::bit_cast<double>(bits);
        return object.size == 4 || object.size == 8;
    }

    std::string utf8(const Object& object) const {
        std::u16string units;
        units.reserve(object.count);
        for (std::size_t i = 0; i < object.count; ++i) {
            units.push_back(static_cast<char16_t>(number(object.content + 2 * i, 2)));
        }
        std::string out;
        return icu::UnicodeString(units.data(), static_cast<std::int32_t>(units.size()))
            .toUTF8String(out);
    }

    bool array(const Object& object, Array& out) const {
        out.reserve(object.count);
        for (std::size_t i = 0; i < object.count; ++i) {
            const auto member = reference(object, i);
            if (!member || !build(*member, out.emplace_back())) {
                return false;
            }
        }
        return true;
    }

    bool dictionary(const Object& object, Dictionary& out) const {
        for (std::size_t i = 0; i < object.count; ++i) {
            const auto key = reference(object, i);
            const auto value = reference(object, object.count + i);
            Value name;
            if (!key || !value || !build(*key, name) || name.string() == nullptr ||
                !build(*value, out[*name.string()])) {
                return false;
            }
        }
        return true;
    }

    std::string_view bytes_;
    const Limits& limits_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t table_ = 0; ///< where the objects end and the table of their offsets begins
    std::size_t end_ = 0;   ///< where the trailer begins
    std::size_t count_ = 0; ///< of objects
    std::vector<Size> sizes_;
    std::vector<State> states_;
};

} // namespace

std::expected<Value, Error> parseBinary(std::string_view bytes, const Limits& limits) {
    return BinaryReader(bytes, limits).read();
}

} // namespace vellory::PropertyList
