// SPDX-License-Identifier: Zlib
#include <host/PrintableText.h>

#include <boost/locale/utf.hpp>

#include <cstdio>

namespace Host {

namespace {

namespace utf = boost::locale::utf;

constexpr std::size_t quotedLimit = 40;

bool IsControl(utf::code_point point) {
    // C1 controls count too: a terminal may read U+009B as the start of an escape sequence.
    return point < 0x20 || (point >= 0x7F && point <= 0x9F);
}

void AppendEscaped(std::string& out, char byte) {
    char escape[8];
    std::snprintf(escape, sizeof(escape), "\\x%02x", static_cast<unsigned char>(byte));
    out += escape;
}

/// The code point that starts at `at`, moving `at` past it; `utf::illegal` or `utf::incomplete`
/// for a byte that starts no valid sequence, and then `at` moves past that byte only, so that
/// the next byte gets its own chance.
utf::code_point Decode(std::string_view::const_iterator& at, std::string_view::const_iterator end) {
    const auto start = at;
    const utf::code_point point = utf::utf_traits<char>::decode(at, end);
    if (point == utf::illegal || point == utf::incomplete)
        at = start + 1;
    return point;
}

} // namespace

std::string Printable(std::string_view text, std::size_t limit) {
    std::string out;
    for (auto at = text.begin(); at != text.end();) {
        if (out.size() >= limit) {
            out += "...";
            break;
        }
        const auto start = at;
        const utf::code_point point = Decode(at, text.end());
        if (point == utf::illegal || point == utf::incomplete || IsControl(point)) {
            for (auto byte = start; byte != at; ++byte)
                AppendEscaped(out, *byte);
        } else {
            out.append(start, at);
        }
    }
    return out;
}

std::string Quoted(std::string_view text) {
    return '"' + Printable(text, quotedLimit) + '"';
}

bool IsUtf8(std::string_view text) {
    for (auto at = text.begin(); at != text.end();) {
        const utf::code_point point = Decode(at, text.end());
        if (point == utf::illegal || point == utf::incomplete)
            return false;
    }
    return true;
}

} // namespace Host
