// SPDX-License-Identifier: Zlib
#include "FileReplacement.h"
#include "TomlText.h"

#include <host/ConfigFile.h>

#include <toml++/toml.h>

#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace Host {

struct ConfigFile::Document {
    toml::table root;
};

namespace {

std::string Quoted(const std::string& text) {
    return "\"" + TomlText::Printable(text) + "\"";
}

std::string Quoted(const std::filesystem::path& path) {
    return Quoted(path.string());
}

/// "Window/Input/PollRate" -> "Window", "Input", "PollRate". Every part must have a name: an
/// empty one would be a table that no TOML key can write back.
std::vector<std::string> SplitKey(const std::string& key) {
    if (!TomlText::IsUtf8(key))
        throw std::invalid_argument("Configuration key " + Quoted(key) +
                                    " is not UTF-8, which a TOML file cannot hold");
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    while (true) {
        const auto slash = key.find('/', start);
        std::string part = key.substr(start, slash == std::string::npos ? slash : slash - start);
        if (part.empty())
            throw std::invalid_argument("Configuration key " + Quoted(key) + " has an empty part");
        parts.push_back(std::move(part));
        if (slash == std::string::npos)
            return parts;
        start = slash + 1;
    }
}

std::runtime_error NotATable(const std::string& key, const std::filesystem::path& path,
                             const std::string& part) {
    return std::runtime_error("Configuration key " + Quoted(key) + " in " + Quoted(path) + ": " +
                              Quoted(part) + " is not a table");
}

/// A table or an array where a key's value should be: never read as text, never overwritten.
void RefuseContainer(const toml::node* value, const std::string& key,
                     const std::filesystem::path& path) {
    if (value != nullptr && (value->is_table() || value->is_array()))
        throw std::runtime_error("Configuration key " + Quoted(key) + " in " + Quoted(path) +
                                 " holds " + (value->is_table() ? "a table" : "an array") +
                                 ", not a value");
}

/// The value under `key`, or null when any part of the way is missing.
const toml::node* Find(const toml::table& root, const std::string& key,
                       const std::filesystem::path& path) {
    const auto parts = SplitKey(key);
    const toml::table* table = &root;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        const toml::node* inner = table->get(parts[i]);
        if (inner == nullptr)
            return nullptr;
        table = inner->as_table();
        if (table == nullptr)
            throw NotATable(key, path, parts[i]);
    }
    const toml::node* value = table->get(parts.back());
    RefuseContainer(value, key, path);
    return value;
}

/// The value as it is written in the file, for messages and for non-string reads.
std::string Written(const toml::node& value) {
    if (const auto* string = value.as_string())
        return Quoted(string->get());
    std::ostringstream text;
    value.visit([&text](const auto& leaf) { text << leaf; });
    return text.str();
}

std::string LoadText(const std::filesystem::path& path) {
    const auto fail = [&path] {
        return std::runtime_error("Cannot read configuration file " + Quoted(path));
    };
    std::error_code error;
    // A folder opens as a stream on some systems and then reads as empty: refuse it up front.
    if (std::filesystem::is_directory(path, error))
        throw fail();
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw fail();
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad())
        throw fail();
    return text;
}

/// The tree in the file at `path`, or nothing when there is no file.
std::optional<toml::table> Parse(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error)
        return std::nullopt;
    const std::string text = LoadText(path);
    try {
        return TomlText::Parse(text, path.string());
    } catch (const toml::parse_error& failure) {
        std::ostringstream message;
        message << "Configuration file " << Quoted(path) << " is not valid TOML at line "
                << failure.source().begin.line << ", column " << failure.source().begin.column
                << ": " << failure.description();
        throw std::runtime_error(message.str());
    }
}

/// `root` as TOML text that loads back to exactly `root`. toml++ 3.3 writes some texts and keys so
/// that they load back changed or not at all, and no such text may replace the file.
/// Throws naming `shown` and the first key that would come back different.
std::string Formatted(const toml::table& root, const std::filesystem::path& shown) {
    std::string content = TomlText::Format(root);
    std::optional<std::string> difference;
    try {
        difference = TomlText::FirstDifference(root, TomlText::Parse(content, shown.string()));
    } catch (const toml::parse_error& failure) {
        throw WriteFailure(shown, "its new text would not load back (" +
                                      std::string(failure.description()) +
                                      "), so it was left as it was");
    }
    if (difference)
        throw WriteFailure(shown, "key " + Quoted(*difference) +
                                      " would not read back as it is, so it was left as it was");
    return content;
}

} // namespace

ConfigFile::ConfigFile(std::filesystem::path path)
    : path(std::move(path))
    , document(std::make_unique<Document>()) {
    if (this->path.empty())
        throw std::invalid_argument("Configuration file path is empty");
    if (auto root = Parse(this->path))
        document->root = std::move(*root);
}

ConfigFile::~ConfigFile() = default;

std::string ConfigFile::ReadText(const std::string& key, const std::string& fallback) {
    const std::lock_guard<std::mutex> lock(mutex);
    const toml::node* value = Find(document->root, key, path);
    if (value == nullptr)
        return fallback;
    if (const auto* text = value->as_string())
        return text->get();
    // The window library writes switches as "1" and "0"; a hand-written boolean reads the same.
    if (const auto* flag = value->as_boolean())
        return flag->get() ? "1" : "0";
    return Written(*value);
}

void ConfigFile::WriteText(const std::string& key, const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto parts = SplitKey(key);
    if (!TomlText::IsUtf8(text))
        throw std::invalid_argument("Configuration text for key " + Quoted(key) +
                                    " is not UTF-8, which a TOML file cannot hold");
    const std::filesystem::path target = LinkTarget(path);
    std::error_code error;
    std::filesystem::create_directories(Folder(target), error);
    if (error)
        throw WriteFailure(path, error.message());
    const WriteLock writing(path, target);
    RemoveStaleTemporaries(target);

    // The file as it is now, so that edits made to it meanwhile survive; a file that no longer
    // parses is reported, not overwritten. Changed on a copy and swapped in only once the file
    // holds it, so memory and disk agree even when the write fails.
    toml::table changed = Parse(path).value_or(document->root);
    toml::table* table = &changed;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        auto [place, inserted] = table->insert(parts[i], toml::table{});
        (void)inserted;
        table = place->second.as_table();
        if (table == nullptr)
            throw NotATable(key, path, parts[i]);
    }
    RefuseContainer(table->get(parts.back()), key, path);
    table->insert_or_assign(parts.back(), text);

    ReplaceContent(path, target, Formatted(changed, path));
    document->root = std::move(changed);
}

int ConfigFile::ReadInteger(const std::string& key, int fallback) {
    const std::lock_guard<std::mutex> lock(mutex);
    const toml::node* value = Find(document->root, key, path);
    if (value == nullptr)
        return fallback;

    long long number = 0;
    bool valid = false;
    if (const auto* integer = value->as_integer()) {
        number = integer->get();
        valid = true;
    } else if (const auto* flag = value->as_boolean()) {
        number = flag->get() ? 1 : 0;
        valid = true;
    } else if (const auto* text = value->as_string()) {
        // The whole text must be the number: "12px" or " 1" is a mistake worth reporting.
        const std::string& digits = text->get();
        const char* end = digits.data() + digits.size();
        const auto [stop, failure] = std::from_chars(digits.data(), end, number);
        valid = failure == std::errc{} && stop == end;
    }
    if (!valid || number < std::numeric_limits<int>::min() ||
        number > std::numeric_limits<int>::max())
        throw std::runtime_error("Configuration key " + Quoted(key) + " in " + Quoted(path) +
                                 " holds " + Written(*value) + ", which is not an integer");
    return static_cast<int>(number);
}

} // namespace Host
