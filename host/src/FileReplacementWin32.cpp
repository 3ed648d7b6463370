// SPDX-License-Identifier: Zlib
#include "FileReplacementPlatform.h"

#include <atomic>
#include <chrono>
#include <fstream>

// <windows.h> without its min and max macros, and only its core.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

// File replacement on Windows: LockFileEx for the lock; the write goes through the standard
// library, which has no flush to the disk to offer here.

namespace Host {

namespace Detail {

LockHandle OpenLocked(const std::filesystem::path& shown, const std::filesystem::path&,
                      const std::filesystem::path& name) {
    const HANDLE handle = ::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    const auto reason = [&name](const std::string& what) {
        return SystemReason(
            what, name,
            std::error_code(static_cast<int>(::GetLastError()), std::system_category()));
    };
    if (handle == INVALID_HANDLE_VALUE)
        throw WriteFailure(shown, reason("cannot open the lock file"));
    OVERLAPPED whole{};
    if (!::LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &whole)) {
        const auto failure = WriteFailure(shown, reason("cannot lock"));
        ::CloseHandle(handle);
        throw failure;
    }
    return reinterpret_cast<LockHandle>(handle);
}

void CloseLocked(LockHandle lock) noexcept {
    const auto handle = reinterpret_cast<HANDLE>(lock);
    // Windows may release the lock of a closed handle only later.
    OVERLAPPED whole{};
    ::UnlockFileEx(handle, 0, MAXDWORD, MAXDWORD, &whole);
    ::CloseHandle(handle);
}

} // namespace Detail

void ReplaceContent(const std::filesystem::path& shown, const std::filesystem::path& target,
                    const std::string& content) {
    const auto fail = [&shown](const std::string& reason) { return WriteFailure(shown, reason); };
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
            throw abandon("cannot create " + Detail::Quoted(temporary));
        out << content;
        out.close();
        if (!out)
            throw abandon("cannot write " + Detail::Quoted(temporary));
    }
    const auto old = std::filesystem::status(target, error);
    if (!error)
        std::filesystem::permissions(temporary, old.permissions(), error);
    if (error && error != std::errc::no_such_file_or_directory)
        throw abandon(error.message());
    std::filesystem::rename(temporary, target, error);
    if (error)
        throw abandon(error.message());
}

} // namespace Host
