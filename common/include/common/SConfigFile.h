// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

/// The configuration file service.
namespace Common::Config {

/// The engine's configuration file: text and integer values under path-like keys
/// ("Window/Resolution"). Found through the instance storage; the host owns it.
///
/// Modules call it on the engine's main thread. Errors of the backing store are the
/// implementation's exceptions and pass through the window library untouched.
struct SConfigFile {
    virtual ~SConfigFile() = default;

    /// The text stored under `key`, or `fallback` when there is none.
    virtual std::string ReadText(const std::string& key, const std::string& fallback) = 0;

    /// Stores `text` under `key`; later reads, in this run and the next, see it.
    virtual void WriteText(const std::string& key, const std::string& text) = 0;

    /// The number stored under `key`, or `fallback` when there is none. A value written as the
    /// text "1" or "0" reads back as that number.
    virtual int ReadInteger(const std::string& key, int fallback) = 0;
};

} // namespace Common::Config
