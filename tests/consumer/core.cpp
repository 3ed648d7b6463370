// SPDX-License-Identifier: Zlib
// An engine with services of its own uses the library alone: it finds the package without the
// host kit, links the library, and catches the library's exception by type across its boundary.
// Exits 0 when the collector, asked for before any factory, refuses as documented.

#include <common/ApplicationErrorException.h>
#include <window/Manufacture.h>
#include <window/Version.h>

#include <iostream>
#include <string>

int main() {
    try {
        Window::ManufactureInputCollector();
    } catch (const Common::ApplicationErrorException& refusal) {
        const bool expected = std::string(refusal.what()) == "SDL not initialized!";
        std::cout << "core consumer: window library " << WINDOW_VERSION_STRING << ", "
                  << (expected ? "refused as documented" : "refused with: ")
                  << (expected ? "" : refusal.what()) << "\n";
        return expected ? 0 : 1;
    }
    std::cerr << "core consumer: the collector was made without a factory\n";
    return 1;
}
