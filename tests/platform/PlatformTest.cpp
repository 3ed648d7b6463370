// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using Window::Platform::MultiByteToWide;

constexpr std::uint32_t bad = 0xFFFD;

/// Where a row's expected values hold exactly.
enum class Exact {
    Everywhere,
    /// The number of U+FFFD is the maximal-subpart count of the decoder outside Windows; Windows'
    /// own count for these sequences (code points of surrogates and above U+10FFFF) is not
    /// pinned down (Wine gives fewer), so there each run of U+FFFD may be shorter, down to one,
    /// and everything else must be as expected.
    OutsideWindows,
};

struct DecodeRow {
    const char* name;
    std::string bytes;
    std::vector<std::uint32_t> expected; // code points
    Exact exact = Exact::Everywhere;
};

/// Wide characters are the platform's: UTF-16 code units where wchar_t has 16 bits (Windows),
/// so a code point above U+FFFF is a surrogate pair there; UTF-32 code points elsewhere.
constexpr bool utf16 = sizeof(wchar_t) == 2;

std::vector<std::uint32_t> WideUnits(const std::vector<std::uint32_t>& points) {
    std::vector<std::uint32_t> units;
    for (const std::uint32_t point : points) {
        if (utf16 && point > 0xFFFF) {
            units.push_back(0xD800 + ((point - 0x10000) >> 10U));
            units.push_back(0xDC00 + ((point - 0x10000) & 0x3FFU));
        } else {
            units.push_back(point);
        }
    }
    return units;
}

/// The units with each run of U+FFFD made one.
std::vector<std::uint32_t> Collapsed(std::vector<std::uint32_t> units) {
    const auto bothBad = [](std::uint32_t a, std::uint32_t b) { return a == bad && b == bad; };
    units.erase(std::unique(units.begin(), units.end(), bothBad), units.end());
    return units;
}

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads.
void PrintTo(const DecodeRow& row, std::ostream* out) {
    *out << row.name;
}

class MultiByteToWideTest : public ::testing::TestWithParam<DecodeRow> {};

// Converts the way the library does: ask for the length, then convert into that much room.
TEST_P(MultiByteToWideTest, Decodes) {
    const std::string& bytes = GetParam().bytes;
    const int size = static_cast<int>(bytes.size());
    const int needed = MultiByteToWide(bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    EXPECT_EQ(MultiByteToWide(bytes.data(), size, wide.data(), needed), needed);
    const std::vector<std::uint32_t> units(wide.begin(), wide.end());
    if (utf16 && GetParam().exact == Exact::OutsideWindows) {
        const std::vector<std::uint32_t> expected = WideUnits(GetParam().expected);
        EXPECT_EQ(Collapsed(units), Collapsed(expected));
        EXPECT_LE(units.size(), expected.size());
    } else {
        EXPECT_EQ(units, WideUnits(GetParam().expected));
    }
}

// Malformed input: one U+FFFD for the longest start of a well-formed sequence, then decoding
// resumes at the byte that did not fit (the maximal-subpart practice).
INSTANTIATE_TEST_SUITE_P(
    Bytes, MultiByteToWideTest,
    ::testing::Values(
        DecodeRow{"TwoBytesAreOne", "\xC3\xA9", {0xE9}},
        DecodeRow{"FourBytes", "\xF0\x9F\x98\x80", {0x1F600}},
        DecodeRow{"EmbeddedNul", std::string("a\0b", 3), {0x61, 0, 0x62}},
        DecodeRow{"LoneFF", "\xFF", {bad}}, DecodeRow{"BrokenPair", "\xC3(", {bad, 0x28}},
        DecodeRow{"TruncatedAtEnd", "\xE2\x82", {bad}},
        DecodeRow{"OverlongTwoBytes", "\xC0\x80", {bad, bad}},
        DecodeRow{"Surrogate", "\xED\xA0\x80z", {bad, bad, bad, 0x7A}, Exact::OutsideWindows},
        DecodeRow{"AboveHighest",
                  "\xF4\x90\x80\x80z",
                  {bad, bad, bad, bad, 0x7A},
                  Exact::OutsideWindows}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MultiByteToWideContractTest, EmptyFailsTooSmallFailsMinusOneCountsTheNul) {
    wchar_t out[2] = {L'x', L'x'};
    EXPECT_EQ(MultiByteToWide("", 0, nullptr, 0), 0);
    EXPECT_EQ(MultiByteToWide("", 0, out, 2), 0);
    EXPECT_EQ(MultiByteToWide("abc", 3, out, 2), 0);
    EXPECT_EQ(MultiByteToWide("\xC3\xA9\xC3\xA9", 4, out, 2), 2);
    EXPECT_EQ(MultiByteToWide("ab", -1, nullptr, 0), 3);
    // No destination: the count, whatever size comes with it.
    EXPECT_EQ(MultiByteToWide("ab", 2, nullptr, 5), 2);
}

} // namespace
