// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Host {

/// `text` made safe to print on a terminal: control characters (C0, DEL and C1) and bytes that
/// are not valid UTF-8 become `\x1b`-style escapes, one per byte; everything else is kept as it
/// is. Backslashes are kept too, so that escaping an escaped text changes nothing. Beyond `limit`
/// bytes of output the rest is left out and "..." marks the cut. Pure; any thread.
///
/// For messages that quote what came from outside (a file name, an argument, a line of an input
/// script), so that a stray escape sequence cannot steer the terminal that shows them.
std::string Printable(std::string_view text, std::size_t limit = std::string::npos);

/// `text` escaped as `Printable` does, at most 40 bytes of it, between double quotes: how a
/// message shows a word that it did not understand. Pure; any thread.
std::string Quoted(std::string_view text);

/// Whether `text` is well-formed UTF-8 (no overlong forms, no surrogates, nothing beyond
/// U+10FFFF). Pure; any thread.
bool IsUtf8(std::string_view text);

} // namespace Host
