// SPDX-License-Identifier: Zlib
// The message log: each record carries its level and is in the file at once.
#include "HostTest.h"

#include <host/MessageLog.h>

#include <regex>

namespace {

using namespace HostTests;

using MessageLogTest = FolderTest;

TEST_F(MessageLogTest, RecordsCarryTheirLevelAndReachTheFileAtOnceAcrossSessions) {
    const fs::path file = folder / "logs" / "session.log";
    Host::MessageLog({false, file}).LogInfo("Creating window: 100% {} {0}");
    Host::MessageLog log({false, file}); // appends
    log.LogError("Failed to set fullscreen mode\n->\tno display");
    // Still open: every record must already be in the file.
    const std::regex stamp(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] )");
    // A record ends as the platform's text lines do; a line break inside a message is its own.
#if defined(_WIN32)
    const std::string end = "\r\n";
#else
    const std::string end = "\n";
#endif
    EXPECT_EQ(std::regex_replace(Stored(file), stamp, "<stamp>"),
              "<stamp>[info] Creating window: 100% {} {0}" + end +
                  "<stamp>[error] Failed to set fullscreen mode\n->\tno display" + end);
}

} // namespace
