// SPDX-License-Identifier: Zlib
// The bootstrap stands the services and the window library up in order and takes them down in
// reverse, and a failing step undoes the earlier ones; a stand-in factory shows the order.
#include "HostTest.h"

#include <host/Bootstrap.h>
#include <zenkbase/singleton.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace HostTests;
using ::testing::HasSubstr;

using Journal = std::vector<std::string>;

std::string Registered() {
    return std::to_string(Zenk::Singleton<Common::Config::SConfigFile>().Exists() +
                          Zenk::Singleton<Common::Log::SMessageLog>().Exists() +
                          Zenk::Singleton<Common::Unique::SRuntimeUniqueId>().Exists() +
                          Zenk::Singleton<Common::SFrameUtility>().Exists() +
                          Zenk::Singleton<Window::SWindowFactory>().Exists());
}

/// A stand-in window factory that notes how many of the five instances stand in the instance
/// storage when it is made and deleted, so that the order of start-up is seen without a window
/// system.
class WatchingFactory : public Window::SWindowFactory {
public:
    explicit WatchingFactory(Journal& journal) : journal(journal) {
        journal.push_back("factory made with " + Registered());
    }
    ~WatchingFactory() override { journal.push_back("factory deleted with " + Registered()); }
    Zenk::IntrudablePointer<Window::IWindow> CreateWindow() override { return nullptr; }

private:
    Journal& journal;
};

class BootstrapTest : public FolderTest {
protected:
    /// The message of the failure, after checking that the storage is as it was.
    std::string FailureOf() {
        std::string message = Outcome([this] { Host::Bootstrap(settings, library); });
        EXPECT_EQ(Registered(), "0");
        return message;
    }

    /// The library's own collector, made once: it is never destroyed.
    Window::SInputCollector* Collector() {
        journal.push_back("collector made with " + Registered());
        static auto* const collector = Window::ManufactureInputCollector();
        return collector;
    }

    Host::BootstrapSettings settings{folder / "engine.toml", {false, folder / "engine.log"}};
    Journal journal;
    Host::LibraryEntryPoints library{[this] { return new WatchingFactory(journal); },
                                     [this] { return Collector(); }};
};

TEST_F(BootstrapTest, StartsServicesThenFactoryThenCollectorAndStopsInReverse) {
    {
        Host::Bootstrap bootstrap(settings, library);
        EXPECT_EQ(Zenk::Singleton<Window::SWindowFactory>().Instance(), &bootstrap.WindowFactory());
    }
    // The factory leaves the storage before it goes, and goes before every service.
    EXPECT_EQ(journal,
              (Journal{"factory made with 4", "collector made with 5", "factory deleted with 4"}));
    EXPECT_EQ(Registered(), "0");
}

TEST_F(BootstrapTest, FailureOfALaterStepUndoesTheEarlierOnes) {
    library.manufactureInputCollector = []() -> Window::SInputCollector* {
        throw std::runtime_error("Multiple instances of SInputCollector");
    };
    EXPECT_EQ(FailureOf(), "Multiple instances of SInputCollector");
    EXPECT_EQ(journal, (Journal{"factory made with 4", "factory deleted with 4"}));
    library.manufactureWindowFactory = [] { return nullptr; };
    EXPECT_EQ(FailureOf(), "The window library gave no window factory");
}

TEST_F(BootstrapTest, CorruptConfigurationFailsBeforeTheFactoryIsMade) {
    Store(settings.configFile, "[Window\n");
    EXPECT_THAT(FailureOf(),
                HasSubstr(settings.configFile.string() + "\" is not valid TOML at line 1"));
    EXPECT_TRUE(journal.empty());
}

} // namespace
