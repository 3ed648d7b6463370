// SPDX-License-Identifier: Zlib
#include "FileReplacementPlatform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// File replacement on POSIX systems: flock for the lock, mkstemp, fsync and rename for the write.

namespace Host {

namespace {

/// The reason of the call that just failed; read before anything else can change errno.
std::string ErrnoReason(const std::string& what, const std::filesystem::path& file) {
    return Detail::SystemReason(what, file, std::error_code(errno, std::generic_category()));
}

} // namespace

namespace Detail {

LockHandle OpenLocked(const std::filesystem::path& shown, const std::filesystem::path& target,
                      const std::filesystem::path& name) {
    // As private as the file: whoever may read it may take turns at writing it.
    struct stat file {};
    const mode_t mode = ::stat(target.c_str(), &file) == 0 ? (file.st_mode & 0666) | 0400 : 0600;
    const int descriptor = ::open(name.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, mode);
    if (descriptor < 0)
        throw WriteFailure(shown, ErrnoReason("cannot open the lock file", name));
    while (::flock(descriptor, LOCK_EX) != 0) {
        if (errno == EINTR)
            continue;
        const auto failure = WriteFailure(shown, ErrnoReason("cannot lock", name));
        ::close(descriptor);
        throw failure;
    }
    return descriptor;
}

void CloseLocked(LockHandle lock) noexcept {
    ::close(static_cast<int>(lock)); // releases the lock
}

} // namespace Detail

void ReplaceContent(const std::filesystem::path& shown, const std::filesystem::path& target,
                    const std::string& content) {
    const auto fail = [&shown](const std::string& reason) { return WriteFailure(shown, reason); };
    const std::filesystem::path folder = Folder(target);
    std::string name = target.string() + ".tmp.XXXXXX";
    int descriptor = ::mkstemp(name.data());
    if (descriptor < 0)
        throw fail(ErrnoReason("cannot create a temporary file beside", target));
    const std::filesystem::path temporary = name;
    const auto abandon = [&](const std::string& what) {
        const std::string message = ErrnoReason(what, temporary);
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
}

} // namespace Host
