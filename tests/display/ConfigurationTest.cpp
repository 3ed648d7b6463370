// SPDX-License-Identifier: Zlib
#include "ForeignLocale.h"
#include "display/ConfigurationKeys.h"

#include <window/Configuration.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

using Window::Resolution;

struct TextRow {
    const char* name;
    const char* text;
    std::optional<Resolution> expected; // empty: malformed
    bool written = false;               // the text is also what the size is written as
};

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads.
void PrintTo(const TextRow& row, std::ostream* out) {
    *out << row.name;
}

class ResolutionTextTest : public ::testing::TestWithParam<TextRow> {};

void ExpectReadAndWrittenBack(const TextRow& row) {
    EXPECT_EQ(Window::Configuration::ResolutionFromText(row.text), row.expected);
    if (row.written) {
        EXPECT_EQ(Window::Configuration::ResolutionToText(*row.expected), row.text);
    }
}

// Reads the text; for a row that is the written form, writes the size back to the same text. The
// same under an engine's global locale that groups digits or writes a decimal comma: a file
// written under one locale must read back under any other.
TEST_P(ResolutionTextTest, ReadsAndWritesBackUnderEveryLocale) {
    ExpectReadAndWrittenBack(GetParam());
    for (const Fakes::ForeignLocale& locale : Fakes::foreignLocales) {
        SCOPED_TRACE(locale.name);
        const Fakes::ScopedGlobalLocale global(locale);
        ExpectReadAndWrittenBack(GetParam());
    }
}

// Every malformed text gives the same empty answer, so each row only says whether it reads.
INSTANTIATE_TEST_SUITE_P(
    Texts, ResolutionTextTest,
    ::testing::Values(TextRow{"Default", "{1000,1000}", Resolution{1000, 1000}, true},
                      TextRow{"Minimised", "{0,0}", Resolution{0, 0}, true},
                      TextRow{"Largest", "{65535,65535}", Resolution{65535, 65535}, true},
                      TextRow{"BlanksAroundNumbers", "{ 800 , 600 }", Resolution{800, 600}},
                      TextRow{"EmptyFieldsDropped", "{,800,,600,}", Resolution{800, 600}},
                      TextRow{"BraceSeparates", "{800}600}", Resolution{800, 600}},
                      TextRow{"PlusSign", "{+800,600}", Resolution{800, 600}},
                      TextRow{"MinusWraps", "{-1,600}", Resolution{65535, 600}},
                      TextRow{"LeadingZeros", "{080,600}", Resolution{80, 600}},
                      TextRow{"OneNumber", "{800}", std::nullopt},
                      TextRow{"ThreeNumbers", "{800,600,32}", std::nullopt},
                      TextRow{"TwoBytes", "{}", std::nullopt},
                      TextRow{"NoNumber", "{,}", std::nullopt},
                      TextRow{"NoBraces", "800,600", std::nullopt},
                      TextRow{"BlankInFront", " {800,600}", std::nullopt},
                      TextRow{"BlankInsideNumber", "{8 00,600}", std::nullopt},
                      TextRow{"NotInteger", "{80.0,600}", std::nullopt},
                      // Bytes below '0' this far from the end overflowed inside the cast.
                      TextRow{"NotIntegerLong", "{1920,1080.00000}", std::nullopt},
                      TextRow{"SlashInside", "{1/00000,600}", std::nullopt},
                      TextRow{"NotDecimal", "{0x20,600}", std::nullopt},
                      // Grouped as a locale groups: never a number, whatever the locale.
                      TextRow{"GroupedByPoint", "{1.000,600}", std::nullopt},
                      TextRow{"GroupedBySpace", "{1 000,600}", std::nullopt},
                      TextRow{"AboveLargest", "{65536,600}", std::nullopt},
                      TextRow{"SignWithoutDigits", "{+,600}", std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

// The text defaults are built by another file's function while the library loads: an empty one
// here would mean an initialisation-order fault.
TEST(ConfigurationKeysTest, TextDefaultsAreBuiltBeforeUse) {
    EXPECT_EQ(Window::ResolutionKey.fallback, "{1000,1000}");
    EXPECT_EQ(Window::LookSensitivityKey.fallback, "{2500,2500}");
}

} // namespace
