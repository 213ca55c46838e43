// SPDX-License-Identifier: Apache-2.0
#include "Support/Xml.h"

#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <expat.h>
#include <unicode/ucnv.h>

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

} // namespace

std::expected<void, Error> parse(std::string_view bytes, Handler& handler, const Limits& limits) {
    if (bytes.size() > limits.bytes ||
        std::cmp_greater(bytes.size(), std::numeric_limits<int>::max())) {
        return std::unexpected(Error::tooLarge);
    }
    const Parser parser(XML_ParserCreate(nullptr), &XML_ParserFree);
    if (parser == nullptr) {
        return std::unexpected(Error::tooLarge);
    }
    Session at{parser.get(), handler, limits, 0, {}, {}, {}};
    XML_SetUserData(parser.get(), &at);
    XML_SetElementHandler(parser.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(parser.get(), onText);
    XML_SetStartDoctypeDeclHandler(parser.get(), onDocumentType);
    XML_SetUnknownEncodingHandler(parser.get(), onUnknownEncoding, nullptr);

    // The whole document in one call: a parser that is fed in pieces starts a long tag or comment
    // again with every piece.
    if (XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) ==
        XML_STATUS_OK) {
        return {};
    }
    if (at.stopped) {
        return std::unexpected(*at.stopped);
    }
    const bool noMemory = XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY;
    return std::unexpected(noMemory ? Error::tooLarge : Error::malformed);
}

} // namespace vellory::Xml
