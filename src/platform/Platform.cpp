// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

// The only file of the library that tests which operating system it is built for.

#if defined(_WIN32)

// SDL_syswm.h includes windows.h: without its min and max macros, and only its core.
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <SDL.h>
#include <SDL_syswm.h>

#include <windows.h>

#else

#include <SDL.h>
// Xlib names its window type `Window`, which would collide with this library's namespace; inside
// this file the X type is called X11Window instead. Only C functions take it, so nothing changes
// at link time.
#define Window X11Window
#include <SDL_syswm.h>
#undef Window

#include <cstdint>
#include <cstring>

#endif

namespace Window::Platform {

namespace {

/// The SDL version whose structure layout the library is built against. SDL accepts the
/// structure from any 2.x caller.
constexpr SDL_version builtAgainst{2, 28, 5};

#if !defined(_WIN32)

constexpr char32_t replacement = 0xFFFD;

/// The continuation bytes that may follow `lead` as the first continuation, and the number of
/// continuation bytes in all. A lead that can begin no well-formed sequence has 0 of them:
/// C0 and C1 (only overlong forms), F5 to FF (beyond U+10FFFF) and lone continuation bytes.
struct Lead {
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    int continuations = 0;
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

/// Decodes `source` and hands each code point to `emit`. A malformed sequence is replaced by
/// one U+FFFD per maximal subpart, the longest start of a well-formed sequence, and decoding
/// goes on at the first byte that did not fit (the practice that Windows follows as well): so
/// "C3 28" gives FFFD 0028, and "ED A0 80", a surrogate, gives three FFFD.
template <class Emit> void Decode(const unsigned char* source, int length, Emit&& emit) {
    int at = 0;
    while (at < length) {
        const unsigned char byte = source[at];
        if (byte < 0x80) {
            emit(static_cast<char32_t>(byte));
            ++at;
            continue;
        }
        const Lead lead = LeadOf(byte);
        if (lead.continuations == 0) {
            emit(replacement);
            ++at;
            continue;
        }
        char32_t point = byte & (0x3FU >> lead.continuations);
        int taken = 1;
        for (; taken <= lead.continuations && at + taken < length; ++taken) {
            const unsigned char next = source[at + taken];
            const unsigned char low = taken == 1 ? lead.low : 0x80;
            const unsigned char high = taken == 1 ? lead.high : 0xBF;
            if (next < low || next > high)
                break;
            point = (point << 6U) | (next & 0x3FU);
        }
        emit(taken > lead.continuations ? point : replacement);
        at += taken;
    }
}

#endif

} // namespace

NativeHandle NativeHandleOf(SDL_Window* window) noexcept {
    SDL_SysWMinfo info{};
    info.version = builtAgainst;
    // SDL refuses for a window it does not know and for a window system it cannot describe; the
    // empty handle then tells the renderer that there is no surface to make.
    if (SDL_GetWindowWMInfo(window, &info) != SDL_TRUE)
        return {};
#if defined(_WIN32)
    return info.info.win.window;
#else
    NativeHandle handle;
    switch (info.subsystem) {
    case SDL_SYSWM_X11:
        handle.system = WindowSystem::X11;
        handle.x11 = {info.info.x11.display, info.info.x11.window};
        break;
    case SDL_SYSWM_WAYLAND:
        handle.system = WindowSystem::Wayland;
        handle.wayland = {info.info.wl.display, info.info.wl.surface};
        break;
    default:
        // Another driver's windows (SDL's own offscreen ones, say) have no surface to offer.
        break;
    }
    return handle;
#endif
}

int MultiByteToWide(const char* source, int sourceLength, wchar_t* destination,
                    int destinationSize) noexcept {
#if defined(_WIN32)
    // CP_UTF8 with no flags: malformed input is replaced, not refused. Windows refuses a null
    // destination with a nonzero size (ERROR_INVALID_PARAMETER), where the contract counts.
    return MultiByteToWideChar(CP_UTF8, 0, source, sourceLength, destination,
                               destination == nullptr ? 0 : destinationSize);
#else
    // As on Windows, -1 means "up to and with the terminating NUL".
    if (source != nullptr && sourceLength == -1)
        sourceLength = static_cast<int>(std::strlen(source)) + 1;
    if (source == nullptr || sourceLength <= 0 || destinationSize < 0)
        return 0;

    const auto* bytes = reinterpret_cast<const unsigned char*>(source);
    int needed = 0;
    Decode(bytes, sourceLength, [&](char32_t) { ++needed; });
    if (destination == nullptr || destinationSize == 0)
        return needed;
    if (needed > destinationSize)
        return 0;

    int written = 0;
    Decode(bytes, sourceLength,
           [&](char32_t point) { destination[written++] = static_cast<wchar_t>(point); });
    return written;
#endif
}

} // namespace Window::Platform
