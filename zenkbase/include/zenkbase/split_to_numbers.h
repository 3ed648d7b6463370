// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

namespace Zenk {

/// Splits a braced list such as "{800, 600}" into its number texts ("800", "600").
///
/// The text must start with "{" and end with "}" exactly (nothing trimmed outside them); inside,
/// "{", "}" and "," all separate, blanks around a token are trimmed, and empty tokens are
/// dropped. Anything shorter than three bytes or not braced gives an empty list. The tokens are
/// not checked to be numbers: that is the caller's conversion. Pure; any thread.
std::vector<std::string> SplitToNumbers(const std::string& text);

} // namespace Zenk
