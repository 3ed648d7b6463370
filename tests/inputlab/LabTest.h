// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>
#include <string>

namespace InputLab {

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads. Rows print as their
// name (each table names its row type with a PrintTo that calls this).
template <class Row> void PrintName(const Row& row, std::ostream* out) {
    *out << row.name;
}

/// The message of the `Error` that `action` throws, or "(no error)".
template <typename Error, typename Action> std::string MessageOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "(no error)";
}

} // namespace InputLab
