// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SConfigFile.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

namespace Host {

/// The configuration file service, kept in a TOML file.
///
/// A key's parts, split at "/", name nested tables: "Window/Input/PollRate" is the key `PollRate`
/// of the table `[Window.Input]`. Text is stored as a TOML string; a hand-edited file may also
/// hold integers, booleans and floats, which read back as described at each operation.
///
/// Every write reads the file again and replaces the whole of it at once (a temporary file of its
/// own beside it, flushed to the disk, then a rename), so a crash mid-write leaves either the old
/// file or the new one, never a torn one, and values edited in the file meanwhile are kept.
/// Writers take turns through an advisory lock on "<file>.lock" beside the file, which stays
/// there: writers in other processes, and other instances in this one, never lose each other's
/// keys. Under that lock a write also removes the temporary files ("<file>.tmp.XXXXXX") that
/// killed writers left. Comments and the layout of a hand-edited file are not kept by a write.
/// The new file keeps the old one's permission bits (one that the first write creates is private
/// to its owner, 0600), and a symbolic link keeps pointing to it: the file it points to is what
/// gets replaced. A file that does not parse is reported, by the constructor or by a write, and
/// never written; nor is new text that would not load back to exactly the values intended.
///
/// Keys and texts are UTF-8, as in any TOML file; every such key and text is stored and read back
/// byte for byte.
///
/// All operations may be called from any thread; they are serialised by one lock.
class ConfigFile final : public Common::Config::SConfigFile {
public:
    /// Loads the file at `path`; a missing file is an empty configuration, which the first write
    /// creates along with missing folders. Host start-up thread.
    /// Throws `std::invalid_argument` ("Configuration file path is empty") for an empty path, and
    /// `std::runtime_error`: `Configuration file "<path>" is not valid TOML at line <L>,
    /// column <C>: <reason>` for a corrupt file, or `Cannot read configuration file "<path>"`
    /// when it exists but cannot be read.
    explicit ConfigFile(std::filesystem::path path);
    ~ConfigFile() override;

    ConfigFile(const ConfigFile&) = delete;
    ConfigFile& operator=(const ConfigFile&) = delete;

    /// The text under `key`, or `fallback` when there is none. Integers and floats read as their
    /// TOML text, booleans as "1" or "0".
    /// Throws `std::invalid_argument` (`Configuration key "<key>" has an empty part`) for a key
    /// such as "a//b", or `Configuration key "<key>" is not UTF-8, which a TOML file cannot hold`
    /// (its stray bytes shown as "\xHH"), and `std::runtime_error` (`Configuration key "<key>" in
    /// "<path>" holds a table, not a value` or `... holds an array, not a value`, or `Configuration
    /// key "<key>" in "<path>": "<part>" is not a table`) when the file's shape does not fit the
    /// key.
    std::string ReadText(const std::string& key, const std::string& fallback) override;

    /// Stores `text` under `key` as a TOML string and rewrites the file before returning, creating
    /// missing tables. The change is made to the file as it is now (to what was loaded when the
    /// file is gone), and memory then holds that. A table or array in the key's place is refused,
    /// not replaced. When the write fails, memory and file both keep the old content.
    /// Throws as `ReadText` for a bad key or a conflicting shape, `std::invalid_argument`
    /// (`Configuration text for key "<key>" is not UTF-8, which a TOML file cannot hold`), as the
    /// constructor when the file can no longer be read or parsed, and `std::runtime_error`
    /// (`Cannot write configuration file "<path>": <reason>`) when the file cannot be locked or
    /// replaced (with the system's reason) or when its new text would not load back as intended
    /// (`key "<key>" would not read back as it is, so it was left as it was`). It may wait for a
    /// writer in another process to finish.
    void WriteText(const std::string& key, const std::string& text) override;

    /// The integer under `key`, or `fallback` when there is none. A string holding exactly a
    /// decimal integer ("1", "-40") reads as that number, a boolean as 1 or 0.
    /// Throws as `ReadText`, and `std::runtime_error` (`Configuration key "<key>" in "<path>"
    /// holds <value>, which is not an integer`) for any other value or one beyond `int`.
    int ReadInteger(const std::string& key, int fallback) override;

    /// The file this configuration reads and writes.
    const std::filesystem::path& Path() const noexcept { return path; }

private:
    struct Document;

    std::filesystem::path path;
    std::unique_ptr<Document> document;
    std::mutex mutex;
};

} // namespace Host
