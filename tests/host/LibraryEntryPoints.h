#pragma once

#include "IdleCollector.h"

#include <host/Bootstrap.h>

namespace HostTests {

/// The library's real window factory with a collector that does nothing: the factory is what
/// these tests watch, and the real collector can be made only once per process.
inline Host::LibraryEntryPoints RealFactoryOnly() {
    static IdleCollector collector;
    return {&Window::ManufactureWindowFactory, [] { return &collector; }};
}

} // namespace HostTests
