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

#if !defined(_WIN32)
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <atomic>
#include <chrono>
#endif

namespace Host {

struct ConfigFile::Document {
    toml::table root;
};

namespace {

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string Quoted(const std::filesystem::path& path) {
    return Quoted(path.string());
}

/// "Window/Input/PollRate" -> "Window", "Input", "PollRate". Every part must have a name: an
/// empty one would be a table that no TOML key can write back.
std::vector<std::string> SplitKey(const std::string& key) {
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
std::string TomlText(const toml::node& value) {
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
        return toml::parse(text, path.string());
    } catch (const toml::parse_error& failure) {
        std::ostringstream message;
        message << "Configuration file " << Quoted(path) << " is not valid TOML at line "
                << failure.source().begin.line << ", column " << failure.source().begin.column
                << ": " << failure.description();
        throw std::runtime_error(message.str());
    }
}

/// The file that `path` names once its symbolic links are followed: a write replaces the file a
/// link points to, not the link.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    std::error_code error;
    // The bound stops a loop of links; the rename then fails or replaces the last link.
    for (int hop = 0; hop < 40 && std::filesystem::is_symlink(path, error); ++hop) {
        const auto link = std::filesystem::read_symlink(path, error);
        if (error)
            break;
        path = link.is_absolute() ? link : path.parent_path() / link;
    }
    return path;
}

/// Replaces `target` by a file holding `content`, with the old file's permission bits: a
/// temporary file of its own beside it, flushed to the disk, then a rename, which is atomic on one
/// file system. Any failure before the rename removes the temporary file and throws, naming
/// `shown` and the system's reason.
void ReplaceFile(const std::filesystem::path& shown, const std::filesystem::path& target,
                 const std::string& content) {
    const auto fail = [&shown](const std::string& reason) {
        return std::runtime_error("Cannot write configuration file " + Quoted(shown) + ": " +
                                  reason);
    };
    std::error_code error;
    const std::filesystem::path folder =
        target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    std::filesystem::create_directories(folder, error);
    if (error)
        throw fail(error.message());
#if !defined(_WIN32)
    const auto reason = [](const std::string& what, const std::filesystem::path& file) {
        return what + " " + Quoted(file) + ": " + std::generic_category().message(errno);
    };
    std::string name = target.string() + ".tmp.XXXXXX";
    int descriptor = ::mkstemp(name.data());
    if (descriptor < 0)
        throw fail(reason("cannot create a temporary file beside", target));
    const std::filesystem::path temporary = name;
    const auto abandon = [&](const std::string& what) {
        const std::string message = reason(what, temporary);
        if (descriptor >= 0)
            ::close(descriptor);
        ::unlink(temporary.c_str());
        return fail(message);
    };
    struct stat old {};
    if (::stat(target.c_str(), &old) == 0 && ::fchmod(descriptor, old.st_mode & 07777) != 0)
        throw abandon("cannot set the mode of");
    for (std::size_t done = 0; done < content.size();) {
        const ssize_t written = ::write(descriptor, content.data() + done, content.size() - done);
        if (written < 0 && errno != EINTR)
            throw abandon("cannot write");
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    if (::fsync(descriptor) != 0)
        throw abandon("cannot flush");
    const int closed = ::close(descriptor);
    descriptor = -1;
    if (closed != 0)
        throw abandon("cannot close");
    if (::rename(temporary.c_str(), target.c_str()) != 0)
        throw abandon("cannot rename");
    // Makes the rename itself durable. Best effort: some file systems cannot sync a folder, and
    // the new file is in place by now.
    const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (directory >= 0) {
        ::fsync(directory);
        ::close(directory);
    }
#else
    // No descriptor to flush here; the stream's state still stops a failed write before the
    // rename.
    static std::atomic<unsigned> serial{0};
    auto temporary = target;
    temporary += ".tmp." +
                 std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()) + "." +
                 std::to_string(serial++);
    const auto abandon = [&](const std::string& reason) {
        std::filesystem::remove(temporary, error);
        return fail(reason);
    };
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out)
            throw abandon("cannot create " + Quoted(temporary));
        out << content;
        out.close();
        if (!out)
            throw abandon("cannot write " + Quoted(temporary));
    }
    const auto old = std::filesystem::status(target, error);
    if (!error)
        std::filesystem::permissions(temporary, old.permissions(), error);
    if (error && error != std::errc::no_such_file_or_directory)
        throw abandon(error.message());
    std::filesystem::rename(temporary, target, error);
    if (error)
        throw abandon(error.message());
#endif
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
    return TomlText(*value);
}

void ConfigFile::WriteText(const std::string& key, const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto parts = SplitKey(key);
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

    std::ostringstream content;
    // Flat tables, as a person writes them by hand.
    content << toml::toml_formatter{changed, toml::toml_formatter::default_flags &
                                                 ~toml::format_flags::indent_sub_tables}
            << '\n';
    ReplaceFile(path, LinkTarget(path), content.str());
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
                                 " holds " + TomlText(*value) + ", which is not an integer");
    return static_cast<int>(number);
}

} // namespace Host
