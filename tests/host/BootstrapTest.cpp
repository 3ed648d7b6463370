#include "IdleCollector.h"
#include "RecordingMessageLog.h"
#include "Registered.h"

#include <host/Bootstrap.h>
#include <zenkbase/singleton.h>

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Notes what stood in the storage when it was made and when it died.
class WatchingFactory : public Window::SWindowFactory {
public:
    explicit WatchingFactory(std::vector<std::string>& journal) : journal(journal) {
        journal.push_back("factory made with: " + HostTests::Registered());
    }
    ~WatchingFactory() override {
        journal.push_back("factory deleted with: " + HostTests::Registered());
    }
    Zenk::IntrudablePointer<Window::IWindow> CreateWindow() override { return nullptr; }

private:
    std::vector<std::string>& journal;
};

class BootstrapTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("host-bootstrap-" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        settings.configFile = folder / "engine.toml";
        settings.log = {false, folder / "engine.log"};
        library.manufactureWindowFactory = [this] { return new WatchingFactory(journal); };
        library.manufactureInputCollector = [this]() -> Window::SInputCollector* {
            journal.push_back("collector made with: " + HostTests::Registered());
            return &collector;
        };
    }
    void TearDown() override {
        EXPECT_EQ(HostTests::Registered(), "") << "a test left an instance in the storage";
        fs::remove_all(folder);
    }

    template <class Failure> std::string FailureOf() {
        try {
            Host::Bootstrap bootstrap(settings, library);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "(nothing thrown)";
    }

    fs::path folder;
    Host::BootstrapSettings settings;
    Host::LibraryEntryPoints library;
    std::vector<std::string> journal;
    HostTests::IdleCollector collector;
};

TEST_F(BootstrapTest, StartsServicesThenFactoryThenCollectorAndStopsInReverse) {
    {
        Host::Bootstrap bootstrap(settings, library);
        EXPECT_EQ(HostTests::Registered(), "config log ids frames factory");
        EXPECT_EQ(&bootstrap.InputCollector(), &collector);
        EXPECT_EQ(Zenk::Singleton<Common::Config::SConfigFile>().Instance(), &bootstrap.Config());
        EXPECT_EQ(Zenk::Singleton<Window::SWindowFactory>().Instance(), &bootstrap.WindowFactory());
    }
    EXPECT_EQ(journal, (std::vector<std::string>{
                           "factory made with: config log ids frames",
                           "collector made with: config log ids frames factory",
                           // Out of the storage before it goes, and before every service.
                           "factory deleted with: config log ids frames",
                       }));
}

TEST_F(BootstrapTest, FailingFactoryUndoesTheServices) {
    library.manufactureWindowFactory = []() -> Window::SWindowFactory* {
        throw std::runtime_error("Failed to initialize SDL: no video.");
    };
    EXPECT_EQ(FailureOf<std::runtime_error>(), "Failed to initialize SDL: no video.");
}

TEST_F(BootstrapTest, FailingCollectorDeletesTheFactoryToo) {
    library.manufactureInputCollector = []() -> Window::SInputCollector* {
        throw std::runtime_error("Multiple instances of SInputCollector");
    };
    EXPECT_EQ(FailureOf<std::runtime_error>(), "Multiple instances of SInputCollector");
    EXPECT_EQ(journal, (std::vector<std::string>{"factory made with: config log ids frames",
                                                 "factory deleted with: config log ids frames"}));
}

TEST_F(BootstrapTest, NullFromAnEntryPointIsRefused) {
    library.manufactureInputCollector = [] { return nullptr; };
    EXPECT_EQ(FailureOf<std::logic_error>(), "The window library gave no input collector");
    library.manufactureWindowFactory = nullptr;
    EXPECT_EQ(FailureOf<std::logic_error>(), "The window library gave no window factory");
}

TEST_F(BootstrapTest, CorruptConfigurationStopsBeforeAnythingIsRegistered) {
    fs::create_directories(folder);
    std::ofstream(settings.configFile) << "[Window\n";
    const std::string message = FailureOf<std::runtime_error>();
    EXPECT_NE(message.find("is not valid TOML at line 1"), std::string::npos) << message;
    EXPECT_TRUE(journal.empty());
}

TEST_F(BootstrapTest, ServiceRegisteredByAnotherHostIsNeitherReplacedNorRemoved) {
    Fakes::RecordingMessageLog foreign;
    Zenk::RegisterInstance<Common::Log::SMessageLog>(foreign);
    EXPECT_THROW(Host::Bootstrap(settings, library), std::logic_error);
    EXPECT_EQ(Zenk::Singleton<Common::Log::SMessageLog>().Instance(), &foreign);
    Zenk::UnregisterInstance<Common::Log::SMessageLog>();
    EXPECT_TRUE(journal.empty());
}

} // namespace
