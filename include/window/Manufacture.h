// SPDX-License-Identifier: Zlib
#pragma once

#include <common/export.h>
#include <window/SInputCollector.h>
#include <window/SWindowFactory.h>

/// The window library: the operating-system window (`SWindowFactory`, `IWindow`) and the input
/// (`SInputCollector` and its reactors). Everything crosses the library's boundary as these
/// interfaces; only the two functions of this header are exported by name.
namespace Window {

/// Starts the window system's video subsystem and returns the window factory.
///
/// Call it once, on the engine's main thread, before anything else of the library; the caller
/// owns the result, registers it in the instance storage as the `SWindowFactory` singleton, and
/// deletes it last. Throws `Common::ApplicationErrorException`: "Multiple instances of
/// SWindowFactory" on every call after the first (even after a failed one), or "Failed to
/// initialize SDL: <reason>." when the video subsystem cannot start.
WINDOW_API SWindowFactory* ManufactureWindowFactory();

/// Returns the input collector.
///
/// Call it once, on the engine's main thread, after the factory is registered. The caller owns
/// the result, which lives until the process ends. Throws `Common::ApplicationErrorException`:
/// "Multiple instances of SInputCollector" on every call after the first (even after a failed
/// one), or "SDL not initialized!" when no `SWindowFactory` is registered.
WINDOW_API SInputCollector* ManufactureInputCollector();

} // namespace Window
