// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <string_view>

namespace Window::Platform {

/// Decodes UTF-8 one code point at a time, with the replacement rules of Windows'
/// MultiByteToWideChar(CP_UTF8, 0, ...), for the systems that have no such call. Malformed input
/// never stops it: each malformed sequence gives U+FFFD, one per maximal subpart (the longest
/// start of a well-formed sequence), and decoding goes on at the first byte that did not fit. So
/// "C3 28" gives FFFD 0028, and "ED A0 80", a surrogate, gives three FFFD.
/// Pure and portable; it reads the bytes in place, so they must outlive it.
class Utf8Decoder {
public:
    static constexpr char32_t replacement = 0xFFFD;

    explicit Utf8Decoder(std::string_view bytes) noexcept : rest(bytes) {}

    /// Whether every byte has been decoded.
    [[nodiscard]] bool Done() const noexcept { return rest.empty(); }

    /// The next code point, or U+FFFD for the next malformed sequence. Only while not `Done()`.
    char32_t Next() noexcept;

    /// The number of code points that `bytes` decodes to, U+FFFD included.
    [[nodiscard]] static std::size_t Count(std::string_view bytes) noexcept;

private:
    std::string_view rest;
};

} // namespace Window::Platform
