// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

namespace Window {

/// Decodes UTF-8 text into the platform's wide string (UTF-16 on Windows, UTF-32 elsewhere).
/// Malformed sequences become U+FFFD. Any thread.
/// Throws `Common::ApplicationErrorException` with "Failed to decode UTF-8 string: " and the text
/// when the platform's conversion fails, which it does for an empty text.
std::wstring Utf8ToWide(const std::string& source);

} // namespace Window
