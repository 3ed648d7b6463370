// SPDX-License-Identifier: Zlib
#include "TomlText.h"

#include <bitset>
#include <cmath>
#include <functional>
#include <memory>
#include <sstream>
#include <type_traits>
#include <utility>

namespace Host::TomlText {

namespace {

/// The length of the UTF-8 sequence at `at` with its code point, or 0 when the bytes there are
/// not one.
std::size_t Decode(std::string_view text, std::size_t at, char32_t& codePoint) noexcept {
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t length = 1;
    if (lead < 0x80)
        codePoint = lead;
    else if (lead >= 0xC2 && lead <= 0xDF)
        length = 2, codePoint = lead & 0x1Fu;
    else if (lead >= 0xE0 && lead <= 0xEF)
        length = 3, codePoint = lead & 0x0Fu;
    else if (lead >= 0xF0 && lead <= 0xF4)
        length = 4, codePoint = lead & 0x07u;
    else
        return 0;
    if (text.size() - at < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0u) != 0x80u)
            return 0;
        codePoint = codePoint << 6 | (next & 0x3Fu);
    }
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || surrogate)
        return 0;
    return length;
}

void Encode(char32_t codePoint, std::string& into) {
    if (codePoint < 0x80) {
        into += static_cast<char>(codePoint);
        return;
    }
    const int tail = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    static constexpr unsigned char leads[] = {0, 0xC0, 0xE0, 0xF0};
    into += static_cast<char>(leads[tail] | (codePoint >> (6 * tail)));
    for (int i = tail - 1; i >= 0; --i)
        into += static_cast<char>(0x80u | ((codePoint >> (6 * i)) & 0x3Fu));
}

/// `text` with each code point that `change` maps to another replaced by it; bytes that are not
/// UTF-8 stay as they are.
template <class Change> std::string Replaced(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        char32_t codePoint = 0;
        const std::size_t length = Decode(text, at, codePoint);
        if (length == 0) {
            result += text[at++];
            continue;
        }
        if (const auto other = change(codePoint))
            Encode(*other, result);
        else
            result.append(text, at, length);
        at += length;
    }
    return result;
}

// toml++ 3.3 asks of a non-ASCII character whether it is a blank through a generated table with
// holes: these ranges fall through its switch into TOML_UNREACHABLE, undefined behaviour ("a¡= 1"
// reaches it while reading the key). Before parsing, each of them is swapped for a private-use
// character that no blank test mistakes, and swapped back in the tree that comes out.
struct Range {
    char32_t first, last;
};
constexpr Range unsafeRanges[] = {
    {0xA1, 0x499}, {0x2C5E, 0x2FFF}, {0x3001, 0x3057}, {0xFB26, 0xFEFE}};
constexpr char32_t unsafeCount = 3019;
// The stand-ins fill one window of this size in the private-use planes 15 and 16: one the text
// does not use itself, so that swapping back is exact.
constexpr char32_t windowSize = 0x1000;
constexpr char32_t firstWindow = 0xF0000;
constexpr std::size_t windowCount = 32;
static_assert(unsafeCount <= windowSize);

std::optional<char32_t> UnsafeIndex(char32_t codePoint) {
    char32_t index = 0;
    for (const Range& range : unsafeRanges) {
        if (codePoint >= range.first && codePoint <= range.last)
            return index + (codePoint - range.first);
        index += range.last - range.first + 1;
    }
    return std::nullopt;
}

char32_t UnsafeAt(char32_t index) {
    for (const Range& range : unsafeRanges) {
        if (index <= range.last - range.first)
            return range.first + index;
        index -= range.last - range.first + 1;
    }
    return 0; // beyond the table: the callers never ask
}

void Restore(toml::node& node, const std::function<std::string(std::string_view)>& back) {
    if (auto* table = node.as_table()) {
        toml::table restored;
        restored.is_inline(table->is_inline());
        for (auto&& [key, value] : *table) {
            Restore(value, back);
            restored.insert(back(key.str()), std::move(value));
        }
        *table = std::move(restored);
    } else if (auto* array = node.as_array()) {
        for (auto& element : *array)
            Restore(element, back);
    } else if (auto* text = node.as_string()) {
        text->get() = back(text->get());
    }
}

constexpr toml::format_flags leafFlags =
    toml::format_flags::allow_unicode_strings | toml::format_flags::allow_binary_integers |
    toml::format_flags::allow_octal_integers | toml::format_flags::allow_hexadecimal_integers;

/// A value that is neither table nor array, as toml++ writes it. Literal and multi-line strings
/// are off: toml++ 3.3 writes "x\n'''" as a multi-line literal that ends too early.
std::string Leaf(const toml::node& value) {
    std::ostringstream text;
    text << toml::toml_formatter{value, leafFlags};
    return text.str();
}

/// toml++ 3.3 writes a key bare when its only other characters are "'", tabs or line breaks, so
/// keys are quoted here.
std::string Key(std::string_view key) {
    bool bare = !key.empty();
    for (const char c : key)
        bare = bare && ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                        (c >= '0' && c <= '9') || c == '_' || c == '-');
    return bare ? std::string(key) : Leaf(toml::value<std::string>(std::string(key)));
}

std::string Inline(const toml::node& node) {
    std::string text;
    if (const auto* table = node.as_table()) {
        for (auto&& [key, value] : *table)
            text += (text.empty() ? "{ " : ", ") + Key(key.str()) + " = " + Inline(value);
        return text.empty() ? "{}" : text + " }";
    }
    if (const auto* array = node.as_array()) {
        for (const auto& element : *array)
            text += (text.empty() ? "[ " : ", ") + Inline(element);
        return text.empty() ? "[]" : text + " ]";
    }
    return Leaf(node);
}

bool IsSection(const toml::node& node) {
    return node.is_table() && !node.as_table()->is_inline();
}

bool IsSectionArray(const toml::node& node) {
    const auto* array = node.as_array();
    if (array == nullptr || array->empty())
        return false;
    for (const auto& element : *array)
        if (!IsSection(element))
            return false;
    return true;
}

void Section(std::string& text, const toml::table& table, const std::string& name, bool element) {
    bool values = false, sections = false;
    for (auto&& [key, value] : table)
        (IsSection(value) || IsSectionArray(value) ? sections : values) = true;
    // A table that holds only tables needs no header of its own: theirs define it.
    if (element || (!name.empty() && (values || !sections))) {
        if (!text.empty())
            text += '\n';
        text += (element ? "[[" : "[") + name + (element ? "]]\n" : "]\n");
    }
    for (auto&& [key, value] : table)
        if (!IsSection(value) && !IsSectionArray(value))
            text += Key(key.str()) + " = " + Inline(value) + '\n';
    for (auto&& [key, value] : table) {
        const std::string inner = (name.empty() ? "" : name + ".") + Key(key.str());
        if (IsSection(value))
            Section(text, *value.as_table(), inner, false);
        else if (IsSectionArray(value))
            for (const auto& each : *value.as_array())
                Section(text, *each.as_table(), inner, true);
    }
}

bool SameValue(const toml::node& expected, const toml::node& actual) {
    return expected.visit([&actual](const auto& node) {
        using Node = std::decay_t<decltype(node)>;
        if constexpr (toml::is_value<Node>) {
            using Type = typename Node::value_type;
            const Type& other = actual.as<Type>()->get();
            if constexpr (std::is_same_v<Type, double>)
                return (std::isnan(node.get()) && std::isnan(other)) ||
                       (node.get() == other && std::signbit(node.get()) == std::signbit(other));
            else
                return node.get() == other;
        } else {
            return false;
        }
    });
}

std::optional<std::string> Difference(const toml::node& expected, const toml::node& actual,
                                      const std::string& name) {
    if (expected.type() != actual.type())
        return name;
    const auto inner = [&name](const toml::key& key) {
        return name.empty() ? std::string(key.str()) : name + "/" + std::string(key.str());
    };
    if (const auto* table = expected.as_table()) {
        const auto& other = *actual.as_table();
        for (auto&& [key, value] : *table) {
            const toml::node* found = other.get(key.str());
            if (found == nullptr)
                return inner(key);
            if (auto difference = Difference(value, *found, inner(key)))
                return difference;
        }
        for (auto&& [key, value] : other)
            if (!table->contains(key.str()))
                return inner(key);
        return std::nullopt;
    }
    if (const auto* array = expected.as_array()) {
        const auto& other = *actual.as_array();
        if (array->size() != other.size())
            return name;
        for (std::size_t i = 0; i < array->size(); ++i)
            if (auto difference = Difference((*array)[i], other[i], name))
                return difference;
        return std::nullopt;
    }
    return SameValue(expected, actual) ? std::nullopt : std::optional<std::string>(name);
}

} // namespace

bool IsUtf8(std::string_view text) noexcept {
    char32_t codePoint = 0;
    for (std::size_t at = 0, length = 0; at < text.size(); at += length)
        if ((length = Decode(text, at, codePoint)) == 0)
            return false;
    return true;
}

std::string Printable(std::string_view text) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        char32_t codePoint = 0;
        const std::size_t length = Decode(text, at, codePoint);
        if (length == 0 || codePoint < 0x20 || codePoint == 0x7F) {
            const auto byte = static_cast<unsigned char>(text[at++]);
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 0xFu]};
        } else {
            result.append(text, at, length);
            at += length;
        }
    }
    return result;
}

toml::table Parse(std::string_view text, std::string_view source) {
    bool unsafe = false;
    std::bitset<windowCount> used;
    for (std::size_t at = 0; at < text.size();) {
        char32_t codePoint = 0;
        const std::size_t length = Decode(text, at, codePoint);
        at += length == 0 ? 1 : length;
        if (length == 0)
            continue; // toml++ refuses the byte before asking anything of it
        unsafe = unsafe || UnsafeIndex(codePoint).has_value();
        if (codePoint >= firstWindow && (codePoint - firstWindow) % windowSize < unsafeCount)
            used.set((codePoint - firstWindow) / windowSize);
    }
    if (!unsafe)
        return toml::parse(text, source);
    std::size_t window = 0;
    while (window < windowCount && used.test(window))
        ++window;
    if (window == windowCount)
        throw toml::parse_error("the file mixes characters that this reader cannot take apart "
                                "from private-use characters of every plane",
                                toml::source_position{1, 1},
                                std::make_shared<const std::string>(source));
    const char32_t base = firstWindow + static_cast<char32_t>(window) * windowSize;
    const auto back = [base](std::string_view swapped) {
        return Replaced(swapped, [base](char32_t codePoint) -> std::optional<char32_t> {
            if (codePoint >= base && codePoint < base + unsafeCount)
                return UnsafeAt(codePoint - base);
            return std::nullopt;
        });
    };
    const std::string safe = Replaced(text, [base](char32_t codePoint) {
        const auto index = UnsafeIndex(codePoint);
        return index ? std::optional<char32_t>(base + *index) : std::nullopt;
    });
    try {
        toml::table root = toml::parse(safe, source);
        Restore(root, back);
        return root;
    } catch (const toml::parse_error& failure) {
        // Lines and columns count characters, so they are the same in both texts.
        const std::string description = back(failure.description());
        throw toml::parse_error(description.c_str(), failure.source());
    }
}

std::string Format(const toml::table& root) {
    std::string text;
    Section(text, root, "", false);
    return text;
}

std::optional<std::string> FirstDifference(const toml::table& expected, const toml::table& actual) {
    return Difference(expected, actual, "");
}

} // namespace Host::TomlText
