// SPDX-License-Identifier: Zlib
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <type_traits>
#include <unistd.h>

namespace HostTests {

namespace fs = std::filesystem;

/// A folder of the test case's own, removed afterwards.
class FolderTest : public ::testing::Test {
protected:
    void TearDown() override { fs::remove_all(folder); }

    // Each test case runs in a process of its own.
    const fs::path folder = fs::temp_directory_path() / ("host-test-" + std::to_string(getpid()));
};

inline void Store(const fs::path& file, const std::string& content) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

inline std::string Stored(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// What `call` returns (nothing when it returns void), or the message of what it throws.
template <class Call> std::string Outcome(Call call) {
    try {
        if constexpr (std::is_void_v<decltype(call())>)
            return call(), "";
        else
            return call();
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

} // namespace HostTests
