// SPDX-License-Identifier: Zlib
#pragma once

namespace Window {

class InputCollectorImpl;

// The six reactor classes are not final on purpose: for a final class GCC 12 devirtualizes the
// release through the virtual base of the reference count at -O2 and then misreports the delete
// of the whole object as a free at an offset (free-nonheap-object).

/// What every reactor is besides its interface: the modal level it answers at, its run-time id,
/// and the collector whose registries hold it.
///
/// The three fields are written once, while the reactor is made, and read by the collector's
/// dispatch directly. The destructor takes the reactor out of the collector's registries, so
/// a registry never points at a dead reactor.
struct ReactorID {
    /// Takes a new id from the registered `Common::Unique::SRuntimeUniqueId`.
    /// Throws `Zenk::MissingInstance` when none is registered.
    ReactorID(InputCollectorImpl* collector, unsigned char modalLevel);
    ReactorID(const ReactorID&) = delete;
    ReactorID& operator=(const ReactorID&) = delete;

    /// Removes the reactor from every registry of `collector`; lets nothing out.
    virtual ~ReactorID();

    unsigned char modalLevel;
    long long id;
    InputCollectorImpl* collector;
};

} // namespace Window
