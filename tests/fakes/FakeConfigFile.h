// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SConfigFile.h>

#include <map>
#include <string>
#include <vector>

namespace Fakes {

/// A configuration held in memory. Integers are parsed from the stored text the way a real
/// file would give them back, so "1" written as text reads as 1.
class FakeConfigFile : public Common::Config::SConfigFile {
public:
    std::string ReadText(const std::string& key, const std::string& fallback) override {
        reads.push_back(key);
        const auto found = values.find(key);
        return found == values.end() ? fallback : found->second;
    }

    void WriteText(const std::string& key, const std::string& text) override {
        writes.emplace_back(key, text);
        values[key] = text;
    }

    int ReadInteger(const std::string& key, int fallback) override {
        reads.push_back(key);
        const auto found = values.find(key);
        return found == values.end() ? fallback : std::stoi(found->second);
    }

    std::map<std::string, std::string> values;
    std::vector<std::string> reads;
    std::vector<std::pair<std::string, std::string>> writes;
};

} // namespace Fakes
