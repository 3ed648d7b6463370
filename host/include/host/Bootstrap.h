// SPDX-License-Identifier: Zlib
#pragma once

#include <host/ConfigFile.h>
#include <host/FrameUtility.h>
#include <host/InstanceRegistration.h>
#include <host/MessageLog.h>
#include <host/RuntimeUniqueId.h>
#include <window/Manufacture.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// The host kit: ready implementations of the four services the window library needs, and a
/// bootstrap that stands them up in the right order, for engines that have none of their own.
namespace Host {

/// What the bootstrap needs to know of the host.
struct BootstrapSettings {
    /// A configuration file and, unless given, a log to the console alone. Not explicit, so that
    /// `Host::Bootstrap host({path})` reads as it means.
    BootstrapSettings(std::filesystem::path configFile, MessageLogSettings log = {})
        : configFile(std::move(configFile))
        , log(std::move(log)) {}

    /// The configuration file (TOML); created by the first write when missing.
    std::filesystem::path configFile;
    /// Where the message log writes.
    MessageLogSettings log;
    /// When given, the frame utility's clock follows the frames, moved on by this at each pump,
    /// rather than the wall clock: ticks, and so the delivery of input, then depend on frames
    /// alone, which a replay of recorded input needs to take the recording's course.
    std::optional<FramePace> framePace;
};

/// The two entry points of the window library. Tests replace them to watch the order of
/// start-up without starting the window system.
struct LibraryEntryPoints {
    /// Stands for `Window::ManufactureWindowFactory`; the bootstrap owns what it returns.
    std::function<Window::SWindowFactory*()> manufactureWindowFactory;
    /// Stands for `Window::ManufactureInputCollector`; what it returns is never deleted.
    std::function<Window::SInputCollector*()> manufactureInputCollector;
};

/// The window library's own exported functions. Inline, so that only a program that uses them
/// needs the library at link time.
inline LibraryEntryPoints WindowLibraryEntryPoints() {
    return {&Window::ManufactureWindowFactory, &Window::ManufactureInputCollector};
}

/// Stands up everything the window library needs, in the order it needs it, and takes it down in
/// reverse: the configuration file, the message log, the unique id generator and the frame
/// utility, each registered in the instance storage; then the window factory, which starts the
/// window system, registered as the `SWindowFactory` singleton; then the input collector.
///
/// Construct it once per process on the engine's main thread, which must also pump `Frames()`.
/// Before it is destroyed, the engine drops every window handle (a closing window writes its
/// size to the configuration and logs, and the factory stops the window system). Reactors may
/// live on: the collector is never destroyed, as the library requires, so a late reactor still
/// finds it; only the factory and the services go.
///
/// A failure at any step undoes the steps before it, so the instance storage is as it was.
///
/// An engine's loop, in short:
///
///     Host::Bootstrap host({configPath, {true, logPath}});
///     auto window = host.WindowFactory().CreateWindow();
///     while (running) {
///         host.InputCollector().QueryInputEvents();
///         host.Frames().Pump(); // the collector's ticks run here, on this thread
///         ... render ...
///     }
///     window.Reset(); // before `host` goes
class Bootstrap {
public:
    /// Starts everything. Throws what the failing step throws: `std::runtime_error` from the
    /// configuration file or the log (a corrupt or unreadable file), `std::logic_error` when a
    /// service is already registered, `Common::ApplicationErrorException` from the library
    /// ("Multiple instances of SWindowFactory", "Failed to initialize SDL: <reason>.",
    /// "Multiple instances of SInputCollector"), or `std::logic_error` ("The window library gave
    /// no <what>") when an entry point returns null.
    explicit Bootstrap(const BootstrapSettings& settings,
                       const LibraryEntryPoints& library = WindowLibraryEntryPoints());

    /// Takes the factory and the services out of the instance storage and destroys them: the
    /// factory first (stopping the window system), then the frame utility, the id generator,
    /// the log and the configuration file. Main thread.
    ~Bootstrap();

    /// Not copied and not moved. The deleted copy takes a non-const reference on purpose: a
    /// `const Bootstrap&` one would compete, for g++, with the settings for `Bootstrap
    /// host({path})` with a path variable (through the explicit constructor, the braces could also
    /// make a Bootstrap to copy from), and the engine's most natural first line would not compile.
    Bootstrap(Bootstrap&) = delete;
    Bootstrap& operator=(const Bootstrap&) = delete;

    /// The configuration file, registered as `Common::Config::SConfigFile`; owned by the
    /// bootstrap. Its own operations say which thread may call them.
    ConfigFile& Config() noexcept { return config; }
    /// The message log, registered as `Common::Log::SMessageLog`; owned by the bootstrap.
    MessageLog& Log() noexcept { return log; }
    /// The unique id generator, registered as `Common::Unique::SRuntimeUniqueId`; owned by the
    /// bootstrap.
    RuntimeUniqueId& Ids() noexcept { return ids; }
    /// The frame utility that the engine's loop pumps.
    FrameUtility& Frames() noexcept { return frames; }
    /// The window factory; owned by the bootstrap.
    Window::SWindowFactory& WindowFactory() noexcept { return *factory; }
    /// The input collector; owned by nobody, it lives to the end of the process.
    Window::SInputCollector& InputCollector() noexcept { return *collector; }

private:
    // Declaration order is start-up order; destruction runs it backwards.
    ConfigFile config;
    InstanceRegistration<Common::Config::SConfigFile> configRegistration;
    MessageLog log;
    InstanceRegistration<Common::Log::SMessageLog> logRegistration;
    RuntimeUniqueId ids;
    InstanceRegistration<Common::Unique::SRuntimeUniqueId> idsRegistration;
    FrameUtility frames;
    InstanceRegistration<Common::SFrameUtility> framesRegistration;
    std::unique_ptr<Window::SWindowFactory> factory;
    InstanceRegistration<Window::SWindowFactory> factoryRegistration;
    Window::SInputCollector* collector;
};

} // namespace Host
