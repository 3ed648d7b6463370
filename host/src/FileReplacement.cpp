// SPDX-License-Identifier: Zlib
#include "FileReplacement.h"

#include "TomlText.h"

#include <fstream>
#include <system_error>

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

namespace {

std::string Quoted(const std::filesystem::path& path) {
    return "\"" + TomlText::Printable(path.string()) + "\"";
}

#if !defined(_WIN32)
std::string SystemReason(const std::string& what, const std::filesystem::path& file) {
    return what + " " + Quoted(file) + ": " + std::generic_category().message(errno);
}
#endif

} // namespace

std::runtime_error WriteFailure(const std::filesystem::path& shown, const std::string& reason) {
    return std::runtime_error("Cannot write configuration file " + Quoted(shown) + ": " + reason);
}

std::filesystem::path Folder(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

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

WriteLock::WriteLock(const std::filesystem::path& shown, const std::filesystem::path& target) {
    std::filesystem::path name = target;
    name += ".lock";
#if !defined(_WIN32)
    // As private as the file: whoever may read it may take turns at writing it.
    struct stat file {};
    const mode_t mode = ::stat(target.c_str(), &file) == 0 ? (file.st_mode & 0666) | 0400 : 0600;
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

WriteLock::~WriteLock() {
#if !defined(_WIN32)
    ::close(descriptor); // releases the lock
#else
    // Windows may release the lock of a closed handle only later.
    OVERLAPPED whole{};
    ::UnlockFileEx(handle, 0, MAXDWORD, MAXDWORD, &whole);
    ::CloseHandle(handle);
#endif
}

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

void ReplaceContent(const std::filesystem::path& shown, const std::filesystem::path& target,
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
} // namespace Host
