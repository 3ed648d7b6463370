#pragma once

#include <common/SConfigFile.h>
#include <common/SFrameUtility.h>
#include <common/SMessageLog.h>
#include <common/SRuntimeUniqueId.h>
#include <window/SWindowFactory.h>
#include <zenkbase/singleton.h>

#include <string>

namespace HostTests {

/// Which of the five instances stand in the storage, as one word each ("config log ids frames
/// factory"), so that a scenario can state what it expects at each step.
inline std::string Registered() {
    std::string present;
    const auto note = [&present](bool exists, const char* name) {
        if (exists)
            present += present.empty() ? name : std::string(" ") + name;
    };
    note(Zenk::Singleton<Common::Config::SConfigFile>().Exists(), "config");
    note(Zenk::Singleton<Common::Log::SMessageLog>().Exists(), "log");
    note(Zenk::Singleton<Common::Unique::SRuntimeUniqueId>().Exists(), "ids");
    note(Zenk::Singleton<Common::SFrameUtility>().Exists(), "frames");
    note(Zenk::Singleton<Window::SWindowFactory>().Exists(), "factory");
    return present;
}

} // namespace HostTests
