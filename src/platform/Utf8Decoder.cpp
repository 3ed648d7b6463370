// SPDX-License-Identifier: Zlib
#include "platform/Utf8Decoder.h"

namespace Window::Platform {

namespace {

/// The continuation bytes that may follow `lead` as the first continuation, and the number of
/// continuation bytes in all. A lead that can begin no well-formed sequence has 0 of them:
/// C0 and C1 (only overlong forms), F5 to FF (beyond U+10FFFF) and lone continuation bytes.
struct Lead {
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    std::size_t continuations = 0;
};

/// Encodes the table of well-formed UTF-8 sequences from the Unicode standard: the narrowed
/// first continuation ranges are what exclude overlong forms (E0, F0), surrogates (ED) and code
/// points above U+10FFFF (F4).
Lead LeadOf(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF)
        return {0x80, 0xBF, 1};
    if (byte == 0xE0)
        return {0xA0, 0xBF, 2};
    if (byte == 0xED)
        return {0x80, 0x9F, 2};
    if (byte >= 0xE1 && byte <= 0xEF)
        return {0x80, 0xBF, 2};
    if (byte == 0xF0)
        return {0x90, 0xBF, 3};
    if (byte >= 0xF1 && byte <= 0xF3)
        return {0x80, 0xBF, 3};
    if (byte == 0xF4)
        return {0x80, 0x8F, 3};
    return {};
}

} // namespace

char32_t Utf8Decoder::Next() noexcept {
    const auto byte = static_cast<unsigned char>(rest.front());
    if (byte < 0x80) {
        rest.remove_prefix(1);
        return byte;
    }
    const Lead lead = LeadOf(byte);
    if (lead.continuations == 0) {
        rest.remove_prefix(1);
        return replacement;
    }
    char32_t point = byte & (0x3FU >> lead.continuations);
    std::size_t taken = 1;
    for (; taken <= lead.continuations && taken < rest.size(); ++taken) {
        const auto next = static_cast<unsigned char>(rest[taken]);
        const unsigned char low = taken == 1 ? lead.low : 0x80;
        const unsigned char high = taken == 1 ? lead.high : 0xBF;
        if (next < low || next > high)
            break;
        point = (point << 6U) | (next & 0x3FU);
    }
    // A sequence cut short is replaced as a whole; the byte that broke it starts the next one.
    const bool whole = taken > lead.continuations;
    rest.remove_prefix(taken);
    return whole ? point : replacement;
}

std::size_t Utf8Decoder::Count(std::string_view bytes) noexcept {
    std::size_t count = 0;
    for (Utf8Decoder decoder(bytes); !decoder.Done(); decoder.Next())
        ++count;
    return count;
}

} // namespace Window::Platform
