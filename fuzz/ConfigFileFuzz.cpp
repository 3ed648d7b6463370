// SPDX-License-Identifier: Zlib
// The host kit's configuration file, loaded from any bytes, then changed by one write.
//
// Input: one byte with the length of the key, one with the length of the text, the key, the
// text, and the rest is the file (fields cut short by the end of the input are shorter). When
// the file loads, every key it holds is read; then the key is written with the text. Either the
// write succeeds, and the file loads again with the key reading back exactly as written and
// every other key reading as before; or it throws a std::exception, and the file is byte for
// byte what it was and the object still reads as before.

#include <host/ConfigFile.h>

#include <toml++/toml.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// A folder of this process's own, removed when the process ends normally. Its name is drawn at
/// random until it is one that did not exist: the same harness may run in several processes at
/// once (ctest replays each input in a process of its own, in parallel).
class ScratchFolder {
public:
    ScratchFolder() {
        std::random_device random;
        for (int attempt = 0; attempt < 100 && folder.empty(); ++attempt) {
            const fs::path candidate =
                fs::temp_directory_path() / ("config_file_fuzz." + std::to_string(random()));
            if (fs::create_directory(candidate))
                folder = candidate;
        }
        if (folder.empty()) {
            std::fprintf(stderr, "config_file: no scratch folder could be made in %s\n",
                         fs::temp_directory_path().string().c_str());
            std::abort();
        }
    }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    fs::path folder;
};

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "config_file: %s\n", what.c_str());
    std::abort();
}

std::string Slurp(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Spill(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
    if (!out.flush())
        Fail("cannot write the input file");
}

/// Every value's key, its parts joined with "/"; keys that the slash syntax cannot name (a part
/// that is empty or holds a "/") are left out. Arrays count as values: they are read too.
void CollectKeys(const toml::table& table, const std::string& prefix,
                 std::vector<std::string>& keys) {
    for (const auto& [name, node] : table) {
        const std::string part(name.str());
        if (part.empty() || part.find('/') != std::string::npos)
            continue;
        std::string key = prefix;
        if (!key.empty())
            key += '/';
        key += part;
        if (const auto* inner = node.as_table())
            CollectKeys(*inner, key, keys);
        else
            keys.push_back(key);
    }
}

std::vector<std::string> KeysOf(const std::string& file) {
    std::vector<std::string> keys;
    try {
        CollectKeys(toml::parse(file), "", keys);
    } catch (const toml::parse_error&) {
        // The configuration loaded what toml++ alone refuses: nothing to compare but the write.
    }
    return keys;
}

constexpr const char* missingText = "\x01missing";
constexpr int missingInteger = std::numeric_limits<int>::min();

/// What both reads of `key` give, exceptions included, as one comparable text.
std::string Reading(Host::ConfigFile& config, const std::string& key) {
    std::string reading;
    try {
        reading = "text " + config.ReadText(key, missingText);
    } catch (const std::exception& error) {
        reading = std::string("text throws ") + error.what();
    }
    try {
        reading += "\ninteger " + std::to_string(config.ReadInteger(key, missingInteger));
    } catch (const std::exception& error) {
        reading += std::string("\ninteger throws ") + error.what();
    }
    return reading;
}

std::map<std::string, std::string> Readings(Host::ConfigFile& config,
                                            const std::vector<std::string>& keys) {
    std::map<std::string, std::string> readings;
    for (const std::string& key : keys)
        readings[key] = Reading(config, key);
    return readings;
}

void ExpectSameReadings(const std::map<std::string, std::string>& before,
                        const std::map<std::string, std::string>& after, const std::string& skip,
                        const char* when) {
    for (const auto& [key, reading] : before) {
        if (key == skip)
            continue;
        const auto found = after.find(key);
        if (found != after.end() && found->second == reading)
            continue;
        std::string message(when);
        message += ": key \"" + key + "\" read\n";
        message += reading;
        message += "\nand now\n";
        message += found == after.end() ? std::string("nothing") : found->second;
        Fail(message);
    }
}

std::string Field(const std::uint8_t*& data, std::size_t& size, std::size_t length) {
    length = std::min(length, size);
    std::string field(reinterpret_cast<const char*>(data), length);
    data += length;
    size -= length;
    return field;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder scratch;
    const fs::path path = scratch.folder / "config.toml";

    const std::size_t keyLength = size > 0 ? data[0] : 0;
    const std::size_t textLength = size > 1 ? data[1] : 0;
    const std::size_t header = std::min<std::size_t>(size, 2);
    data += header;
    size -= header;
    const std::string key = Field(data, size, keyLength);
    const std::string text = Field(data, size, textLength);
    const std::string file(reinterpret_cast<const char*>(data), size);

    // A failed write of an earlier input may leave a temporary file beside; start clean.
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(scratch.folder))
        fs::remove_all(entry.path(), ignored);
    Spill(path, file);

    std::unique_ptr<Host::ConfigFile> config;
    try {
        config = std::make_unique<Host::ConfigFile>(path);
    } catch (const std::runtime_error&) {
        return 0; // not TOML, as the constructor reports
    }
    const std::vector<std::string> keys = KeysOf(file);
    const auto before = Readings(*config, keys);
    const std::string written = Reading(*config, key);

    try {
        config->WriteText(key, text);
    } catch (const std::exception& error) {
        if (Slurp(path) != file)
            Fail(std::string("a failed write changed the file: ") + error.what());
        ExpectSameReadings(before, Readings(*config, keys), "", "after a failed write");
        if (Reading(*config, key) != written)
            Fail("a failed write changed the key in memory");
        return 0;
    }
    if (config->ReadText(key, missingText) != text)
        Fail("the written key does not read back from memory");

    std::unique_ptr<Host::ConfigFile> again;
    try {
        again = std::make_unique<Host::ConfigFile>(path);
    } catch (const std::exception& error) {
        Fail(std::string("the written file does not load: ") + error.what());
    }
    if (again->ReadText(key, missingText) != text)
        Fail("the written key does not read back from the file");
    ExpectSameReadings(before, Readings(*again, keys), key, "after the write");
    return 0;
}
