#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Window::Platform::MultiByteToWide;

struct DecodeRow {
    const char* name;
    std::string bytes;
    std::vector<std::uint32_t> expected;
};

class MultiByteToWideTest : public ::testing::TestWithParam<DecodeRow> {};

// Converts the way the library does: ask for the length, then convert into that much room.
TEST_P(MultiByteToWideTest, Decodes) {
    const std::string& bytes = GetParam().bytes;
    const int size = static_cast<int>(bytes.size());
    const int needed = MultiByteToWide(bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    EXPECT_EQ(MultiByteToWide(bytes.data(), size, wide.data(), needed), needed);
    EXPECT_EQ(std::vector<std::uint32_t>(wide.begin(), wide.end()), GetParam().expected);
}

constexpr std::uint32_t bad = 0xFFFD;

// Malformed input: one U+FFFD for the longest start of a well-formed sequence, then decoding
// resumes at the byte that did not fit (the maximal-subpart practice).
INSTANTIATE_TEST_SUITE_P(
    Bytes, MultiByteToWideTest,
    ::testing::Values(DecodeRow{"TwoBytesAreOne", "\xC3\xA9", {0xE9}},
                      DecodeRow{"FourBytes", "\xF0\x9F\x98\x80", {0x1F600}},
                      DecodeRow{"EmbeddedNul", std::string("a\0b", 3), {0x61, 0, 0x62}},
                      DecodeRow{"LoneFF", "\xFF", {bad}},
                      DecodeRow{"BrokenPair", "\xC3(", {bad, 0x28}},
                      DecodeRow{"TruncatedAtEnd", "\xE2\x82", {bad}},
                      DecodeRow{"OverlongTwoBytes", "\xC0\x80", {bad, bad}},
                      DecodeRow{"Surrogate", "\xED\xA0\x80", {bad, bad, bad}},
                      DecodeRow{"AboveHighest", "\xF4\x90\x80\x80", {bad, bad, bad, bad}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MultiByteToWideContractTest, EmptyFailsTooSmallFailsMinusOneCountsTheNul) {
    wchar_t out[2] = {L'x', L'x'};
    EXPECT_EQ(MultiByteToWide("", 0, nullptr, 0), 0);
    EXPECT_EQ(MultiByteToWide("", 0, out, 2), 0);
    EXPECT_EQ(MultiByteToWide("abc", 3, out, 2), 0);
    EXPECT_EQ(MultiByteToWide("\xC3\xA9\xC3\xA9", 4, out, 2), 2);
    EXPECT_EQ(MultiByteToWide("ab", -1, nullptr, 0), 3);
}

} // namespace
