// SPDX-License-Identifier: Zlib
#include "FileReplacement.h"

#include "FileReplacementPlatform.h"
#include "TomlText.h"

#include <system_error>

// What every system shares; the calls that differ are in FileReplacementPosix.cpp and
// FileReplacementWin32.cpp.

namespace Host {

namespace Detail {

std::string Quoted(const std::filesystem::path& path) {
    return "\"" + TomlText::Printable(path.string()) + "\"";
}

std::string SystemReason(const std::string& what, const std::filesystem::path& file,
                         std::error_code code) {
    return what + " " + Quoted(file) + ": " + code.message();
}

} // namespace Detail

namespace {

std::filesystem::path LockFileOf(const std::filesystem::path& target) {
    std::filesystem::path name = target;
    name += ".lock";
    return name;
}

} // namespace

std::runtime_error WriteFailure(const std::filesystem::path& shown, const std::string& reason) {
    return std::runtime_error("Cannot write configuration file " + Detail::Quoted(shown) + ": " +
                              reason);
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

WriteLock::WriteLock(const std::filesystem::path& shown, const std::filesystem::path& target)
    : lock(Detail::OpenLocked(shown, target, LockFileOf(target))) {}

WriteLock::~WriteLock() {
    Detail::CloseLocked(lock);
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

} // namespace Host
