// The stored size text read from a user's configuration: any bytes. Reading never misbehaves,
// and a text that reads as a size writes back to a text that reads as the same size, and which
// is then its own written form. The first four bytes also make a size to write and read back.

#include "display/ResolutionText.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void Fail(const char* what, const std::string& text) {
    std::fprintf(stderr, "resolution_text: %s: \"%s\"\n", what, text.c_str());
    std::abort();
}

void CheckWrittenForm(const Window::Resolution& size) {
    const std::string written = Window::ResolutionToText(size);
    const auto reread = Window::ResolutionFromText(written);
    if (!reread || *reread != size)
        Fail("the written form does not read back as the same size", written);
    if (Window::ResolutionToText(*reread) != written)
        Fail("the written form is not stable", written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (const auto read = Window::ResolutionFromText(text))
        CheckWrittenForm(*read);
    if (size >= 4) {
        CheckWrittenForm(Window::Resolution{static_cast<unsigned short>(data[0] << 8U | data[1]),
                                            static_cast<unsigned short>(data[2] << 8U | data[3])});
    }
    return 0;
}
