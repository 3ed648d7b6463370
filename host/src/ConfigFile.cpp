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

#if !defined(_WIN32)
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <atomic>
#include <chrono>
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#endif

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

std::runtime_error WriteFailure(const std::filesystem::path& shown, const std::string& reason) {
    return std::runtime_error("Cannot write configuration file " + Quoted(shown) + ": " + reason);
}

std::filesystem::path Folder(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

#if !defined(_WIN32)
std::string SystemReason(const std::string& what, const std::filesystem::path& file) {
    return what + " " + Quoted(file) + ": " + std::generic_category().message(errno);
}
#endif

/// The advisory lock on "<file>.lock" beside the file that a write replaces, held from reading
/// the file to replacing it, so that writers in other processes and other instances in this one
/// take turns and none loses another's keys. The lock file stays: removing it would let a writer
/// that opened it just before lock a file that the others no longer see.
class WriteLock {
public:
    WriteLock(const std::filesystem::path& shown, const std::filesystem::path& target) {
        std::filesystem::path name = target;
        name += ".lock";
#if !defined(_WIN32)
        // As private as the file: whoever may read it may take turns at writing it.
        struct stat file {};
        const mode_t mode =
            ::stat(target.c_str(), &file) == 0 ? (file.st_mode & 0666) | 0400 : 0600;
        descriptor = ::open(name.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, mode);
        if (descriptor < 0)
            throw WriteFailure(shown, SystemReason("cannot open the lock file", name));
        while (::flock(descriptor, LOCK_EX) != 0) {
            if (errno == EINTR)
                continue;
            const auto failure = WriteFailure(shown, SystemReason("cannot lock", name));
            ::close(descriptor);
            throw failure;
        }
#else
        handle = ::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                               OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        const auto reason = [&name](const std::string& what) {
            return what + " " + Quoted(name) + ": " +
                   std::system_category().message(static_cast<int>(::GetLastError()));
        };
        if (handle == INVALID_HANDLE_VALUE)
            throw WriteFailure(shown, reason("cannot open the lock file"));
        OVERLAPPED whole{};
        if (!::LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &whole)) {
            const auto failure = WriteFailure(shown, reason("cannot lock"));
            ::CloseHandle(handle);
            throw failure;
        }
#endif
    }

    ~WriteLock() {
#if !defined(_WIN32)
        ::close(descriptor); // releases the lock
#else
        // Windows may release the lock of a closed handle only later.
        OVERLAPPED whole{};
        ::UnlockFileEx(handle, 0, MAXDWORD, MAXDWORD, &whole);
        ::CloseHandle(handle);
#endif
    }

    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
#if !defined(_WIN32)
    int descriptor = -1;
#else
    HANDLE handle = INVALID_HANDLE_VALUE;
#endif
};

/// Removes the temporary files ("<file>.tmp.XXXXXX") that writers killed mid-write left beside
/// `target`. Safe only under the write lock: a live writer makes its temporary file only while it
/// holds the lock, so any other one found then has no writer.
void RemoveStaleTemporaries(const std::filesystem::path& target) {
    std::filesystem::path prefix = target.filename();
    prefix += ".tmp.";
    const auto& start = prefix.native();
    std::error_code error;
    for (std::filesystem::directory_iterator entry(Folder(target), error), end;
         !error && entry != end; entry.increment(error)) {
        const auto name = entry->path().filename().native();
        bool stale = name.size() == start.size() + 6 && name.compare(0, start.size(), start) == 0;
        for (std::size_t i = start.size(); stale && i < name.size(); ++i)
            stale = (name[i] >= '0' && name[i] <= '9') || (name[i] >= 'a' && name[i] <= 'z') ||
                    (name[i] >= 'A' && name[i] <= 'Z');
        std::error_code ignored; // one that cannot go now goes at a later write
        if (stale)
            std::filesystem::remove(entry->path(), ignored);
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

/// Replaces `target` by a file holding `content`, with the old file's permission bits: a
/// temporary file of its own beside it, flushed to the disk, then a rename, which is atomic on one
/// file system. Any failure before the rename removes the temporary file and throws, naming
/// `shown` and the system's reason. Called under the write lock, in an existing folder.
void ReplaceFile(const std::filesystem::path& shown, const std::filesystem::path& target,
                 const std::string& content) {
    const auto fail = [&shown](const std::string& reason) { return WriteFailure(shown, reason); };
    const std::filesystem::path folder = Folder(target);
#if !defined(_WIN32)
    std::string name = target.string() + ".tmp.XXXXXX";
    int descriptor = ::mkstemp(name.data());
    if (descriptor < 0)
        throw fail(SystemReason("cannot create a temporary file beside", target));
    const std::filesystem::path temporary = name;
    const auto abandon = [&](const std::string& what) {
        const std::string message = SystemReason(what, temporary);
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
    // rename. The name has the shape that RemoveStaleTemporaries looks for.
    static std::atomic<unsigned> serial{0};
    auto seed = static_cast<unsigned long long>(
                    std::chrono::steady_clock::now().time_since_epoch().count()) *
                    31 +
                serial++;
    std::string suffix;
    for (int i = 0; i < 6; ++i, seed /= 36)
        suffix += "0123456789abcdefghijklmnopqrstuvwxyz"[seed % 36];
    auto temporary = target;
    temporary += ".tmp." + suffix;
    std::error_code error;
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

    ReplaceFile(path, target, Formatted(changed, path));
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
