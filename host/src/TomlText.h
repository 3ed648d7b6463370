// SPDX-License-Identifier: Zlib
#pragma once

#include <toml++/toml.h>

#include <optional>
#include <string>
#include <string_view>

/// The configuration file's TOML text: reading it without the traps of toml++ 3.3, writing it so
/// that it reads back as it was, and checking that it does.
namespace Host::TomlText {

/// Whether `text` is UTF-8 (no overlong forms, no surrogates, nothing past U+10FFFF): the only
/// text a TOML file can hold.
bool IsUtf8(std::string_view text) noexcept;

/// `text` fit for a message: its control characters and the bytes that are not UTF-8 as "\xHH".
std::string Printable(std::string_view text);

/// The tree of the TOML document `text`; `source` names it in the error. Safe for any bytes,
/// which `toml::parse` of toml++ 3.3 is not. Any thread.
/// Throws `toml::parse_error` as `toml::parse` does.
toml::table Parse(std::string_view text, std::string_view source);

/// `root` as a TOML document: a section per table, each text a basic string with escapes, each
/// key bare when TOML allows it and quoted otherwise. Any thread; the caller owns the text.
std::string Format(const toml::table& root);

/// The first key, as a configuration key ("Window/Resolution"), whose value differs between the
/// trees or that only one of them holds; nothing when both hold the same values. Floats compare
/// by their bits, except that every NaN is one value, as the text TOML keeps of it.
std::optional<std::string> FirstDifference(const toml::table& expected, const toml::table& actual);

} // namespace Host::TomlText
