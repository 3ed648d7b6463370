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

} // namespace

Bootstrap::Bootstrap(const BootstrapSettings& settings, const LibraryEntryPoints& library)
    : config(settings.configFile)
    , configRegistration(config)
    , log(settings.log)
    , logRegistration(log)
    , idsRegistration(ids)
    , framesRegistration(frames)
    , factory(Call(library.manufactureWindowFactory, "window factory"))
    , factoryRegistration(*factory)
    // The library checks that the factory stands in the storage before it makes the collector.
    , collector(Call(library.manufactureInputCollector, "input collector")) {}

Bootstrap::~Bootstrap() = default;

} // namespace Host
