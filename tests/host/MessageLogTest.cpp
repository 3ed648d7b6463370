#include <host/MessageLog.h>

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class MessageLogTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("host-log-" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        file = folder / "logs" / "session.log";
    }
    void TearDown() override { fs::remove_all(folder); }

    std::vector<std::string> Lines() const {
        std::ifstream in(file);
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);)
            lines.push_back(line);
        return lines;
    }

    fs::path folder;
    fs::path file;
};

// "[2026-11-23 04:45:15.123] [info] " and then the caller's text.
const std::regex Stamp(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] )");

TEST_F(MessageLogTest, EachCallIsOneRecordWithItsLevelAndTheTextUntouched) {
    {
        Host::MessageLog log({false, file});
        log.LogInfo("Creating window: Tavrino. Version: 905 {1000,1000}");
        log.LogError("Failed to set fullscreen mode\n->\tno display");
        log.LogWarning("100% {} {0}");
    }
    const auto lines = Lines();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(std::regex_search(lines[0], Stamp)) << lines[0];
    EXPECT_EQ(std::regex_replace(lines[0], Stamp, ""),
              "[info] Creating window: Tavrino. Version: 905 {1000,1000}");
    EXPECT_EQ(std::regex_replace(lines[1], Stamp, ""), "[error] Failed to set fullscreen mode");
    EXPECT_EQ(lines[2], "->\tno display");
    EXPECT_EQ(std::regex_replace(lines[3], Stamp, ""), "[warning] 100% {} {0}");
}

TEST_F(MessageLogTest, RecordsReachTheFileAtOnceAndAreAppendedAcrossSessions) {
    Host::MessageLog({false, file}).LogInfo("first session");
    Host::MessageLog second({false, file});
    second.LogInfo("second session");
    // Still open: the record must already be on disk.
    const auto lines = Lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(std::regex_replace(lines[1], Stamp, ""), "[info] second session");
}

TEST_F(MessageLogTest, ConsoleRecordsGoToStandardError) {
    ::testing::internal::CaptureStderr();
    {
        Host::MessageLog log({true, {}});
        log.LogError("window refused");
    }
    const std::string printed = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(printed.find("] [error] window refused\n"), std::string::npos) << printed;
}

TEST_F(MessageLogTest, UnopenableFileIsReportedByName) {
    fs::create_directories(file); // a folder where the file should be
    try {
        Host::MessageLog log({false, file});
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& failure) {
        const std::string message = failure.what();
        EXPECT_EQ(message.rfind("Cannot open log file \"" + file.string() + "\": ", 0), 0u)
            << message;
    }
}

} // namespace
