// SPDX-License-Identifier: Zlib
// Typed text on its way to the text reactors: any bytes, checked against ICU's decoder, which
// replaces each maximal subpart of a malformed sequence by U+FFFD as the library promises. The
// platform's contract around the count (a too-small room fails, -1 means up to the NUL) is
// checked on the same bytes.

#include "input/Utf8ToWide.h"
#include "platform/Platform.h"

#include <common/ApplicationErrorException.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unicode/ustring.h>
#include <vector>

namespace {

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "utf8_to_wide: %s\n", what);
    std::abort();
}

/// ICU's reading of `bytes` as code points, each malformed maximal subpart one U+FFFD.
std::u32string Reference(const std::string& bytes) {
    const auto length = static_cast<std::int32_t>(bytes.size());
    // Never more UTF-16 units than bytes: one byte gives at most one unit.
    std::vector<UChar> utf16(bytes.size() + 1);
    std::int32_t utf16Length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(utf16.data(), static_cast<std::int32_t>(utf16.size()), &utf16Length,
                         bytes.data(), length, 0xFFFD, nullptr, &status);
    if (U_FAILURE(status))
        Fail(u_errorName(status));
    std::u32string points(static_cast<std::size_t>(utf16Length) + 1, U'\0');
    std::int32_t pointsLength = 0;
    // After the substitution the UTF-16 holds no lone surrogate: this step cannot substitute.
    u_strToUTF32(reinterpret_cast<UChar32*>(points.data()),
                 static_cast<std::int32_t>(points.size()), &pointsLength, utf16.data(), utf16Length,
                 &status);
    if (U_FAILURE(status))
        Fail(u_errorName(status));
    points.resize(static_cast<std::size_t>(pointsLength));
    return points;
}

std::u32string CodePoints(const std::wstring& wide) {
    static_assert(sizeof(wchar_t) == sizeof(char32_t), "the fuzzers run where wchar_t is UTF-32");
    return {wide.begin(), wide.end()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    if (bytes.empty()) {
        try {
            Window::Utf8ToWide(bytes);
        } catch (const Common::ApplicationErrorException&) {
            return 0;
        }
        Fail("an empty text decoded instead of failing");
    }

    const std::u32string expected = Reference(bytes);
    if (CodePoints(Window::Utf8ToWide(bytes)) != expected)
        Fail("the decoded text differs from ICU's");

    // The count matches the text; a room of the count less one is too small (0 asks the count).
    const int sourceLength = static_cast<int>(size);
    const int needed = Window::Platform::MultiByteToWide(bytes.data(), sourceLength, nullptr, 0);
    if (needed != static_cast<int>(expected.size()))
        Fail("the count differs from the decoded length");
    if (needed > 1) {
        // Exactly that much memory, so that a write past it is an overflow the sanitizer sees.
        std::vector<wchar_t> room(static_cast<std::size_t>(needed - 1));
        if (Window::Platform::MultiByteToWide(bytes.data(), sourceLength, room.data(),
                                              needed - 1) != 0)
            Fail("a too-small room did not fail");
    }

    // -1: up to the first NUL, which is decoded too.
    const std::string terminated = bytes.substr(0, bytes.find('\0'));
    std::u32string withNul = terminated.empty() ? U"" : Reference(terminated);
    withNul.push_back(U'\0');
    std::vector<wchar_t> all(withNul.size());
    const int written = Window::Platform::MultiByteToWide(terminated.c_str(), -1, all.data(),
                                                          static_cast<int>(all.size()));
    if (std::u32string(all.begin(), all.begin() + written) != withNul)
        Fail("the NUL-terminated decoding differs from ICU's");
    return 0;
}
