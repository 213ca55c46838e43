// SPDX-License-Identifier: Apache-2.0
#include "Support/Xml.h"

#include <cerrno>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <expat.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/ucnv.h>
#include <unistd.h>

namespace vellory::Xml {

namespace {

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

/// What the parser's callbacks share during one document.
struct Session {
    XML_Parser parser;
    Handler& handler;
    const Limits& limits;
    std::size_t depth = 0;
    std::vector<Attribute> attributes;
    std::set<std::string, std::less<>> names;
    /// Why the reading was stopped from inside a callback.
    std::optional<Error> stopped;

    void stop(Error error) {
        stopped = error;
        XML_StopParser(parser, XML_FALSE);
    }

    /// Whether `name` is known or may become so.
    bool admits(std::string_view name) {
        if (names.contains(name)) {
            return true;
        }
        return names.size() < limits.names && names.emplace(name).second;
    }
};

Session& session(void* data) {
    return *static_cast<Session*>(data);
}

void onStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    Session& at = session(data);
    if (at.stopped) {
        return; // an empty element still reports its end after a stop
    }
    bool fits = ++at.depth <= at.limits.depth && at.admits(name);
    at.attributes.clear();
    for (; fits && *attributes != nullptr; attributes += 2) {
        at.attributes.push_back({attributes[0], attributes[1]});
        fits = at.admits(attributes[0]);
    }
    if (!fits) {
        at.stop(Error::tooLarge);
        return;
    }
    at.handler.startElement(name, at.attributes);
}

void onEnd(void* data, const XML_Char* name) {
    Session& at = session(data);
    if (!at.stopped) {
        --at.depth;
        at.handler.endElement(name);
    }
}

void onText(void* data, const XML_Char* piece, int size) {
    Session& at = session(data);
    if (!at.stopped) {
        at.handler.text({piece, static_cast<std::size_t>(size)});
    }
}

void onDocumentType(void* data, const XML_Char*, const XML_Char*, const XML_Char*,
                    int hasDeclarations) {
    if (hasDeclarations != 0) {
        session(data).stop(Error::declarations);
    }
}

/// Teaches the parser an encoding in which every character is one byte.
int onUnknownEncoding(void*, const XML_Char* name, XML_Encoding* encoding) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name, &status),
                                                                       &ucnv_close);
    if (U_FAILURE(status) || ucnv_getType(converter.get()) != UCNV_SBCS) {
        return XML_STATUS_ERROR;
    }
    for (int byte = 0; byte < 256; ++byte) {
        const char text = static_cast<char>(byte);
        const char* begin = &text;
        status = U_ZERO_ERROR;
        ucnv_reset(converter.get());
        const UChar32 c = ucnv_getNextUChar(converter.get(), &begin, &text + 1, &status);
        encoding->map[byte] = U_FAILURE(status) || c == 0xFFFD ? -1 : c;
    }
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

/// One document on its way through the parser.
class Reading {
  public:
    Reading(Handler& handler, const Limits& limits)
        : parser_(XML_ParserCreate(nullptr), &XML_ParserFree),
          session_{parser_.get(), handler, limits, 0, {}, {}, {}} {
        if (parser_ == nullptr) {
            return;
        }
        XML_SetUserData(parser_.get(), &session_);
        XML_SetElementHandler(parser_.get(), onStart, onEnd);
        XML_SetCharacterDataHandler(parser_.get(), onText);
        XML_SetStartDoctypeDeclHandler(parser_.get(), onDocumentType);
        XML_SetUnknownEncodingHandler(parser_.get(), onUnknownEncoding, nullptr);
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    bool isReady() const { return parser_ != nullptr; }
    XML_Parser parser() const { return parser_.get(); }

    std::expected<void, Error> outcome(XML_Status status) const {
        if (status == XML_STATUS_OK) {
            return {};
        }
        if (session_.stopped) {
            return std::unexpected(*session_.stopped);
        }
        const bool noMemory = XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY;
        return std::unexpected(noMemory ? Error::tooLarge : Error::malformed);
    }

  private:
    Parser parser_;
    Session session_;
};

/// A regular file open for reading; a pipe or device is never waited for.
class InputFile {
  public:
    explicit InputFile(const std::filesystem::path& file)
        : descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        struct stat status{};
        if (descriptor_ >= 0 && (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))) {
            ::close(descriptor_);
            descriptor_ = -1;
        }
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    bool isOpen() const { return descriptor_ >= 0; }
    /// How many bytes were read; 0 at the end, nothing when reading fails.
    std::optional<std::size_t> read(void* into, std::size_t size) const {
        ssize_t got = 0;
        do {
            got = ::read(descriptor_, into, size);
        } while (got < 0 && errno == EINTR);
        return got < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(got));
    }

  private:
    int descriptor_;
};

constexpr int pieceBytes = 128 * 1024;

} // namespace

std::expected<void, Error> parse(std::string_view bytes, Handler& handler, const Limits& limits) {
    if (bytes.size() > limits.bytes ||
        std::cmp_greater(bytes.size(), std::numeric_limits<int>::max())) {
        return std::unexpected(Error::tooLarge);
    }
    const Reading reading(handler, limits);
    if (!reading.isReady()) {
        return std::unexpected(Error::tooLarge);
    }
    // The whole document in one call: a parser that is fed in pieces starts a long tag or comment
    // again with every piece.
    return reading.outcome(
        XML_Parse(reading.parser(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE));
}

std::expected<void, Error> parseFile(const std::filesystem::path& file, Handler& handler,
                                     const Limits& limits) {
    const InputFile input(file);
    if (!input.isOpen()) {
        return std::unexpected(Error::unreadable);
    }
    const Reading reading(handler, limits);
    std::size_t total = 0;
    while (true) {
        void* piece = reading.isReady() ? XML_GetBuffer(reading.parser(), pieceBytes) : nullptr;
        if (piece == nullptr) {
            return std::unexpected(Error::tooLarge);
        }
        const auto size = input.read(piece, pieceBytes);
        if (!size) {
            return std::unexpected(Error::unreadable);
        }
        total += *size;
        if (total > limits.bytes) {
            return std::unexpected(Error::tooLarge);
        }
        const bool isEnd = *size == 0;
        auto outcome = reading.outcome(XML_ParseBuffer(reading.parser(), static_cast<int>(*size),
                                                       isEnd ? XML_TRUE : XML_FALSE));
        if (!outcome || isEnd) {
            return outcome;
        }
        // Where the parser waits for the rest of something.
        const XML_Index at = XML_GetCurrentByteIndex(reading.parser());
        if (at >= 0 && std::cmp_greater(total, longestToken) &&
            std::cmp_less(at, total - longestToken)) {
            return std::unexpected(Error::tooLarge);
        }
    }
}

} // namespace vellory::Xml
