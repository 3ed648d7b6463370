#include <host/ConfigFile.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

class ConfigFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string(test->test_suite_name()) + "." + test->name();
        for (char& c : name)
            c = c == '/' ? '_' : c;
        folder = fs::temp_directory_path() / ("host-config-" + name);
        fs::remove_all(folder);
        fs::create_directories(folder);
        path = folder / "settings" / "engine.toml";
    }
    void TearDown() override { fs::remove_all(folder); }

    void Store(const std::string& content) {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
    }

    std::string Stored() const {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    template <class Call> std::string MessageOf(Call call) {
        try {
            call();
        } catch (const std::exception& failure) {
            return failure.what();
        }
        return "(nothing thrown)";
    }

    fs::path folder;
    fs::path path;
};

TEST_F(ConfigFileTest, MissingFileReadsFallbacksAndIsCreatedByTheFirstWrite) {
    Host::ConfigFile config(path);
    EXPECT_EQ(config.ReadText("Window/Resolution", "{1000,1000}"), "{1000,1000}");
    EXPECT_EQ(config.ReadInteger("Window/Input/PollRate", 60), 60);
    EXPECT_FALSE(fs::exists(path)) << "reading must not create the file";

    config.WriteText("Window/Input/PollRate", "120");
    EXPECT_TRUE(fs::exists(path));
    EXPECT_FALSE(fs::exists(path.string() + ".tmp")) << "the temporary file must be renamed";
}

TEST_F(ConfigFileTest, WrittenTextSurvivesIntoTheNextRun) {
    {
        Host::ConfigFile config(path);
        config.WriteText("Window/Resolution", "{1280,720}");
        config.WriteText("Window/FullScreen", "1");
        config.WriteText("Window/Input/PollRate", "90");
        config.WriteText("Player", "quote \" slash \\ line\nbreak, ünïcode");
        config.WriteText("Window/FullScreen", "0");
    }
    Host::ConfigFile next(path);
    EXPECT_EQ(next.ReadText("Window/Resolution", ""), "{1280,720}");
    EXPECT_EQ(next.ReadInteger("Window/FullScreen", 7), 0);
    EXPECT_EQ(next.ReadInteger("Window/Input/PollRate", 60), 90);
    EXPECT_EQ(next.ReadText("Player", ""), "quote \" slash \\ line\nbreak, ünïcode");
    EXPECT_NE(Stored().find("[Window.Input]"), std::string::npos) << Stored();
}

TEST_F(ConfigFileTest, HandWrittenValuesOfOtherTypesRead) {
    Store("[Window]\nFullScreen = true\nResolution = \"{800,600}\"\n"
          "[Window.Input]\nPollRate = 144\n[Mouse]\nScale = 0.5\n");
    Host::ConfigFile config(path);
    EXPECT_EQ(config.ReadInteger("Window/FullScreen", 0), 1);
    EXPECT_EQ(config.ReadText("Window/FullScreen", ""), "1");
    EXPECT_EQ(config.ReadInteger("Window/Input/PollRate", 60), 144);
    EXPECT_EQ(config.ReadText("Window/Input/PollRate", ""), "144");
    EXPECT_EQ(config.ReadText("Mouse/Scale", ""), "0.5");
    EXPECT_EQ(config.ReadText("Window/Resolution", ""), "{800,600}");
}

struct IntegerRow {
    const char* name;
    const char* stored; // the TOML value under Section/Key
    int expected;       // when `error` is null
    const char* error;  // the exact message, with the path left as "<path>"

    friend void PrintTo(const IntegerRow& row, std::ostream* out) { *out << row.name; }
};

class ConfigFileIntegerTest : public ConfigFileTest,
                              public ::testing::WithParamInterface<IntegerRow> {};

TEST_P(ConfigFileIntegerTest, ReadsOrReportsTheStoredValue) {
    const IntegerRow& row = GetParam();
    Store(std::string("[Section]\nKey = ") + row.stored + "\n");
    Host::ConfigFile config(path);
    if (row.error == nullptr) {
        EXPECT_EQ(config.ReadInteger("Section/Key", -1), row.expected);
        return;
    }
    std::string expected = row.error;
    expected.replace(expected.find("<path>"), 6, path.string());
    EXPECT_EQ(MessageOf([&] { config.ReadInteger("Section/Key", -1); }), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ConfigFileIntegerTest,
    ::testing::Values(
        IntegerRow{"TextOne", "\"1\"", 1, nullptr}, IntegerRow{"TextZero", "\"0\"", 0, nullptr},
        IntegerRow{"TextNegative", "\"-40\"", -40, nullptr},
        IntegerRow{"Integer", "60", 60, nullptr}, IntegerRow{"False", "false", 0, nullptr},
        IntegerRow{"IntMax", "2147483647", 2147483647, nullptr},
        IntegerRow{"Word", "\"abc\"", 0,
                   "Configuration key \"Section/Key\" in \"<path>\" holds \"abc\", which is not "
                   "an integer"},
        IntegerRow{"TrailingUnit", "\"12px\"", 0,
                   "Configuration key \"Section/Key\" in \"<path>\" holds \"12px\", which is not "
                   "an integer"},
        IntegerRow{"LeadingBlank", "\" 1\"", 0,
                   "Configuration key \"Section/Key\" in \"<path>\" holds \" 1\", which is not "
                   "an integer"},
        IntegerRow{"Float", "0.5", 0,
                   "Configuration key \"Section/Key\" in \"<path>\" holds 0.5, which is not an "
                   "integer"},
        IntegerRow{"BeyondInt", "2147483648", 0,
                   "Configuration key \"Section/Key\" in \"<path>\" holds 2147483648, which is "
                   "not an integer"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ConfigFileTest, CorruptFileIsReportedWithItsLineAndNeverOverwritten) {
    const std::string corrupt = "[Window]\nResolution = \"{800,600}\"\nFullScreen = \n";
    Store(corrupt);
    const std::string message = MessageOf([&] { Host::ConfigFile config(path); });
    EXPECT_EQ(message.rfind("Configuration file \"" + path.string() +
                                "\" is not valid TOML at line 3, column 14: ",
                            0),
              0u)
        << message;
    EXPECT_EQ(Stored(), corrupt);
}

TEST_F(ConfigFileTest, FolderInPlaceOfTheFileCannotBeRead) {
    fs::create_directories(path);
    EXPECT_EQ(MessageOf([&] { Host::ConfigFile config(path); }),
              "Cannot read configuration file \"" + path.string() + "\"");
}

class ConfigFileKeyTest : public ConfigFileTest,
                          public ::testing::WithParamInterface<const char*> {};

TEST_P(ConfigFileKeyTest, KeyWithAnEmptyPartIsRefusedEverywhere) {
    Host::ConfigFile config(path);
    const std::string key = GetParam();
    const std::string expected = "Configuration key \"" + key + "\" has an empty part";
    EXPECT_EQ(MessageOf([&] { config.ReadText(key, ""); }), expected);
    EXPECT_EQ(MessageOf([&] { config.ReadInteger(key, 0); }), expected);
    EXPECT_EQ(MessageOf([&] { config.WriteText(key, "x"); }), expected);
    EXPECT_FALSE(fs::exists(path));
}

INSTANTIATE_TEST_SUITE_P(Keys, ConfigFileKeyTest,
                         ::testing::Values("", "/Window", "Window/", "Window//Resolution"),
                         [](const auto& info) { return "Row" + std::to_string(info.index); });

TEST_F(ConfigFileTest, KeyThatCrossesAValueIsAConflictAndLeavesTheFile) {
    const std::string stored = "Window = 3\n";
    Store(stored);
    Host::ConfigFile config(path);
    const std::string expected = "Configuration key \"Window/Resolution\" in \"" + path.string() +
                                 "\": \"Window\" is not a table";
    EXPECT_EQ(MessageOf([&] { config.ReadText("Window/Resolution", ""); }), expected);
    EXPECT_EQ(MessageOf([&] { config.WriteText("Window/Resolution", "{1,1}"); }), expected);
    EXPECT_EQ(config.ReadInteger("Window", 0), 3);
    EXPECT_EQ(Stored(), stored);
}

TEST_F(ConfigFileTest, TableOrArrayInTheKeysPlaceIsNeitherReadNorReplaced) {
    const std::string stored = "List = [1, 2]\n[Window]\nResolution = 1\n";
    Store(stored);
    Host::ConfigFile config(path);
    const std::string where = " in \"" + path.string() + "\" holds ";
    EXPECT_EQ(MessageOf([&] { config.WriteText("Window", "x"); }),
              "Configuration key \"Window\"" + where + "a table, not a value");
    EXPECT_EQ(MessageOf([&] { config.ReadInteger("List", 0); }),
              "Configuration key \"List\"" + where + "an array, not a value");
    EXPECT_EQ(MessageOf([&] { config.WriteText("List", "x"); }),
              "Configuration key \"List\"" + where + "an array, not a value");
    EXPECT_EQ(Stored(), stored);
}

TEST_F(ConfigFileTest, FailedWriteKeepsTheOldContentInMemory) {
    // A file where the folder should be: the configuration cannot be saved.
    fs::create_directories(folder);
    std::ofstream(folder / "settings") << "in the way";
    Host::ConfigFile config(path);
    const std::string message = MessageOf([&] { config.WriteText("Window/FullScreen", "1"); });
    EXPECT_EQ(message.rfind("Cannot write configuration file \"" + path.string() + "\": ", 0), 0u)
        << message;
    EXPECT_EQ(config.ReadInteger("Window/FullScreen", 0), 0);
}

} // namespace
