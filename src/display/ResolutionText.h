// SPDX-License-Identifier: Zlib
#pragma once

#include <window/Resolution.h>

#include <optional>
#include <string>

namespace Window {

/// The stored form of a size: "{", width, ",", height, "}" with no blanks, as "{1000,1000}".
/// The numbers are plain decimal digits whatever the global locale, so a file written under one
/// locale reads back under any other.
/// Pure; any thread. It touches no namespace-scope object of the library, so the configuration
/// keys may call it while the library is being loaded.
std::string ResolutionToText(const Resolution& resolution);

/// Reads a size written by `ResolutionToText`, and more: blanks around each number, empty
/// fields, "{" or "}" as separators inside the braces, a sign and leading zeros are accepted
/// ("{ 800 , 600 }", "{800,,600}", "{-1,600}" is 65535 x 600). Empty when the text is not a
/// braced list of exactly two numbers that fit in 16 bits; it never throws for a malformed
/// text, and the caller words the failure. The global locale has no say: "{1,000,600}" is three
/// numbers under every locale. Pure; any thread.
std::optional<Resolution> ResolutionFromText(const std::string& text);

} // namespace Window
