// SPDX-License-Identifier: Zlib
// The stored size text read from a user's configuration: any bytes. Reading never misbehaves,
// and a text that reads as a size writes back to a text that reads as the same size, and which
// is then its own written form. The first four bytes also make a size to write and read back.
// Every input runs twice: under the classic locale, and under a global locale that groups digits
// in threes with "." (the cast then reads and writes separators, another path through it).

#include <window/Configuration.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string>

namespace {

void Fail(const char* what, const std::string& text) {
    std::fprintf(stderr, "resolution_text: %s: \"%s\" (global locale %s)\n", what, text.c_str(),
                 std::locale().name().c_str());
    std::abort();
}

/// Groups as German does. A "," separator would not do: the braced list splits at it, so such a
/// locale writes sizes that do not read back.
struct DotGrouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

void CheckWrittenForm(const Window::Resolution& size) {
    const std::string written = Window::Configuration::ResolutionToText(size);
    const auto reread = Window::Configuration::ResolutionFromText(written);
    if (!reread || *reread != size)
        Fail("the written form does not read back as the same size", written);
    if (Window::Configuration::ResolutionToText(*reread) != written)
        Fail("the written form is not stable", written);
}

void Check(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (const auto read = Window::Configuration::ResolutionFromText(text))
        CheckWrittenForm(*read);
    if (size >= 4) {
        CheckWrittenForm(Window::Resolution{static_cast<unsigned short>(data[0] << 8U | data[1]),
                                            static_cast<unsigned short>(data[2] << 8U | data[3])});
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::locale grouping(std::locale::classic(), new DotGrouping);
    Check(data, size);
    std::locale::global(grouping);
    Check(data, size);
    std::locale::global(std::locale::classic());
    return 0;
}
