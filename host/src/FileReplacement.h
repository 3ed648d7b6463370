// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

/// How the configuration file is replaced on disk without ever being half-written: a temporary
/// file beside it, flushed, then renamed over it, with writers of every process taking turns.
namespace Host {

namespace Detail {
/// The system's handle of the open lock file, as wide as the widest of them: a descriptor where
/// files are descriptors, a HANDLE on Windows, without the system's headers in every includer.
using LockHandle = std::intptr_t;
} // namespace Detail

/// The error of a write to the configuration file `shown`, with the reason after its name.
std::runtime_error WriteFailure(const std::filesystem::path& shown, const std::string& reason);

/// The folder that holds `file`: "." for a bare name.
std::filesystem::path Folder(const std::filesystem::path& file);

/// The file that `path` names once its symbolic links are followed: a write replaces the file a
/// link points to, not the link.
std::filesystem::path LinkTarget(std::filesystem::path path);

/// The advisory lock on "<file>.lock" beside the file that a write replaces, held from reading
/// the file to replacing it, so that writers in other processes and other instances in this one
/// take turns and none loses another's keys. The lock file stays: removing it would let a writer
/// that opened it just before lock a file that the others no longer see.
/// The constructor blocks until the lock is taken; it throws `std::runtime_error` naming `shown`
/// when the lock file cannot be opened or locked.
class WriteLock {
public:
    WriteLock(const std::filesystem::path& shown, const std::filesystem::path& target);
    ~WriteLock();

    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
    Detail::LockHandle lock;
};

/// Removes the temporary files ("<file>.tmp.XXXXXX") that writers killed mid-write left beside
/// `target`. Safe only under the write lock: a live writer makes its temporary file only while it
/// holds the lock, so any other one found then has no writer. Never throws for a file it cannot
/// remove: that one goes at a later write.
void RemoveStaleTemporaries(const std::filesystem::path& target);

/// Replaces `target` by a file holding `content` (not "ReplaceFile": a macro of <windows.h>), with
/// the old file's permission bits: a temporary file of its own beside it, flushed to the disk, then
/// a rename, which is atomic on one file system. Any failure before the rename removes the
/// temporary file and throws `std::runtime_error`, naming `shown` and the system's reason. Called
/// under the write lock, in an existing folder.
void ReplaceContent(const std::filesystem::path& shown, const std::filesystem::path& target,
                    const std::string& content);

} // namespace Host
