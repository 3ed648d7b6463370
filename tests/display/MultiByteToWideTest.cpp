#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Window::Platform::MultiByteToWide;

/// Converts the way the library does: ask for the length, then convert into that much room.
std::vector<std::uint32_t> Convert(const std::string& bytes) {
    const int size = static_cast<int>(bytes.size());
    const int needed = MultiByteToWide(bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    const int written = MultiByteToWide(bytes.data(), size, wide.data(), needed);
    EXPECT_EQ(written, needed);
    return {wide.begin(), wide.end()};
}

struct DecodeRow {
    const char* name;
    std::string bytes;
    std::vector<std::uint32_t> expected;
};

void PrintTo(const DecodeRow& row, std::ostream* out) {
    *out << row.name;
}

class MultiByteToWideTest : public ::testing::TestWithParam<DecodeRow> {};

TEST_P(MultiByteToWideTest, Decodes) {
    EXPECT_EQ(Convert(GetParam().bytes), GetParam().expected);
}

constexpr std::uint32_t bad = 0xFFFD;

// Malformed input follows the maximal-subpart practice: one U+FFFD for the longest start of a
// well-formed sequence, then decoding resumes at the byte that did not fit. The first rows are
// what Windows' own function gives; the others pin the choices for overlong forms, surrogates
// and code points beyond U+10FFFF.
INSTANTIATE_TEST_SUITE_P(
    Bytes, MultiByteToWideTest,
    ::testing::Values(DecodeRow{"Ascii", "abc", {0x61, 0x62, 0x63}},
                      DecodeRow{"TwoBytesAreOne", "\xC3\xA9", {0xE9}},
                      DecodeRow{"ThreeBytes", "\xE2\x82\xAC", {0x20AC}},
                      DecodeRow{"FourBytes", "\xF0\x9F\x98\x80", {0x1F600}},
                      DecodeRow{"Highest", "\xF4\x8F\xBF\xBF", {0x10FFFF}},
                      DecodeRow{"EmbeddedNul", std::string("a\0b", 3), {0x61, 0, 0x62}},
                      DecodeRow{"LoneFF", "\xFF", {bad}},
                      DecodeRow{"BrokenPair", "\xC3(", {bad, 0x28}},
                      DecodeRow{"BadByteBetween",
                                "a\xFF"
                                "b",
                                {0x61, bad, 0x62}},
                      DecodeRow{"LoneContinuation", "\x80", {bad}},
                      DecodeRow{"TruncatedAtEnd", "\xE2\x82", {bad}},
                      DecodeRow{"TruncatedBeforeAscii",
                                "\xF0\x9F\x98"
                                "A",
                                {bad, 0x41}},
                      DecodeRow{"OverlongTwoBytes", "\xC0\x80", {bad, bad}},
                      DecodeRow{"OverlongThreeBytes", "\xE0\x80\x80", {bad, bad, bad}},
                      DecodeRow{"OverlongFourBytes", "\xF0\x80\x80\x80", {bad, bad, bad, bad}},
                      DecodeRow{"Surrogate", "\xED\xA0\x80", {bad, bad, bad}},
                      DecodeRow{"AboveHighest", "\xF4\x90\x80\x80", {bad, bad, bad, bad}},
                      DecodeRow{"LeadBeyondF4", "\xF5\x80\x80\x80", {bad, bad, bad, bad}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MultiByteToWideContractTest, EmptySourceFails) {
    wchar_t out[4];
    EXPECT_EQ(MultiByteToWide("", 0, nullptr, 0), 0);
    EXPECT_EQ(MultiByteToWide("", 0, out, 4), 0);
}

TEST(MultiByteToWideContractTest, TooSmallDestinationFailsAndExactFits) {
    wchar_t out[2] = {L'x', L'x'};
    EXPECT_EQ(MultiByteToWide("abc", 3, out, 2), 0);
    EXPECT_EQ(MultiByteToWide("\xC3\xA9\xC3\xA9", 4, out, 2), 2);
    EXPECT_EQ(out[1], L'\xE9');
}

TEST(MultiByteToWideContractTest, MinusOneCountsTheTerminatingNul) {
    EXPECT_EQ(MultiByteToWide("ab", -1, nullptr, 0), 3);
}

} // namespace
