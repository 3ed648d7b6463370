// SPDX-License-Identifier: Zlib
#include <host/Bootstrap.h>

#include <stdexcept>
#include <string>

namespace Host {

namespace {

template <class Made>
Made* Call(const std::function<Made*()>& entryPoint, const std::string& what) {
    if (!entryPoint)
        throw std::logic_error("The window library gave no " + what);
    Made* made = entryPoint();
    if (made == nullptr)
        throw std::logic_error("The window library gave no " + what);
    return made;
}

// The collector lives until the process ends and nothing destroys it (its interface has no
// destructor). Kept here, it stays reachable after the bootstrap is gone, so that it is a
// process-long object, not a lost one; the library makes at most one per process.
Window::SInputCollector* processCollector = nullptr;

} // namespace

Bootstrap::Bootstrap(const BootstrapSettings& settings, const LibraryEntryPoints& library)
    : config(settings.configFile)
    , configRegistration(config)
    , log(settings.log)
    , logRegistration(log)
    , idsRegistration(ids)
    , frames(settings.framePace)
    , framesRegistration(frames)
    , factory(Call(library.manufactureWindowFactory, "window factory"))
    , factoryRegistration(*factory)
    // The library checks that the factory stands in the storage before it makes the collector.
    , collector(Call(library.manufactureInputCollector, "input collector")) {
    processCollector = collector;
}

Bootstrap::~Bootstrap() = default;

} // namespace Host
