#include "display/ResolutionText.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

namespace Window {
// Readable failures: "800 x 600" rather than a byte dump.
void PrintTo(const Resolution& resolution, std::ostream* out) {
    *out << resolution.width << " x " << resolution.height;
}
} // namespace Window

namespace {

using Window::Resolution;

struct FromTextRow {
    const char* name;
    const char* text;
    std::optional<Resolution> expected;
};

void PrintTo(const FromTextRow& row, std::ostream* out) {
    *out << row.name;
}

class ResolutionFromTextTest : public ::testing::TestWithParam<FromTextRow> {};

TEST_P(ResolutionFromTextTest, Reads) {
    EXPECT_EQ(Window::ResolutionFromText(GetParam().text), GetParam().expected);
}

// Every malformed text gives the same empty answer, so each row only says whether it reads.
INSTANTIATE_TEST_SUITE_P(
    Texts, ResolutionFromTextTest,
    ::testing::Values(FromTextRow{"Plain", "{1000,1000}", Resolution{1000, 1000}},
                      FromTextRow{"BlanksAroundNumbers", "{ 800 , 600 }", Resolution{800, 600}},
                      FromTextRow{"EmptyFieldDropped", "{800,,600}", Resolution{800, 600}},
                      FromTextRow{"BraceSeparates", "{800}600}", Resolution{800, 600}},
                      FromTextRow{"OuterCommas", "{,800,600,}", Resolution{800, 600}},
                      FromTextRow{"PlusSign", "{+800,600}", Resolution{800, 600}},
                      FromTextRow{"MinusWraps", "{-1,600}", Resolution{65535, 600}},
                      FromTextRow{"LeadingZeros", "{080,600}", Resolution{80, 600}},
                      FromTextRow{"Zero", "{0,0}", Resolution{0, 0}},
                      FromTextRow{"Largest", "{65535,65535}", Resolution{65535, 65535}},
                      FromTextRow{"OneNumber", "{800}", std::nullopt},
                      FromTextRow{"ThreeNumbers", "{800,600,32}", std::nullopt},
                      FromTextRow{"TwoBytes", "{}", std::nullopt},
                      FromTextRow{"NoNumber", "{,}", std::nullopt},
                      FromTextRow{"NoBraces", "800,600", std::nullopt},
                      FromTextRow{"NoClosingBrace", "{800,600", std::nullopt},
                      FromTextRow{"BlankInFront", " {800,600}", std::nullopt},
                      FromTextRow{"BlankBehind", "{800,600} ", std::nullopt},
                      FromTextRow{"BlankInsideNumber", "{8 00,600}", std::nullopt},
                      FromTextRow{"NotInteger", "{80.0,600}", std::nullopt},
                      FromTextRow{"NotDecimal", "{0x20,600}", std::nullopt},
                      FromTextRow{"AboveLargest", "{65536,600}", std::nullopt},
                      FromTextRow{"SignWithoutDigits", "{+,600}", std::nullopt},
                      FromTextRow{"Empty", "", std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

struct ToTextRow {
    const char* name;
    Resolution resolution;
    const char* expected;
};

void PrintTo(const ToTextRow& row, std::ostream* out) {
    *out << row.name;
}

class ResolutionToTextTest : public ::testing::TestWithParam<ToTextRow> {};

TEST_P(ResolutionToTextTest, WritesAndReadsBack) {
    const std::string text = Window::ResolutionToText(GetParam().resolution);
    EXPECT_EQ(text, GetParam().expected);
    EXPECT_EQ(Window::ResolutionFromText(text), GetParam().resolution);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ResolutionToTextTest,
                         ::testing::Values(ToTextRow{"Default", {1000, 1000}, "{1000,1000}"},
                                           ToTextRow{"Minimised", {0, 0}, "{0,0}"},
                                           ToTextRow{"Minimum", {700, 700}, "{700,700}"},
                                           ToTextRow{"Uneven", {1920, 1080}, "{1920,1080}"},
                                           ToTextRow{"OneDigit", {1, 9}, "{1,9}"},
                                           ToTextRow{"Largest", {65535, 65535}, "{65535,65535}"}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
