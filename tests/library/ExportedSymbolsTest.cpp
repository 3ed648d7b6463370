// SPDX-License-Identifier: Zlib
// What an engine can reach in libwindow.so: the two manufacture functions by name, and the
// library's two exception types by type. Anything more of ours is a leak of the implementation.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// The defined dynamic symbols of the built library, as the linker names them (mangled).
std::vector<std::string> ExportedSymbols() {
    const std::string command =
        std::string("nm -D --defined-only --format=posix '") + WINDOW_LIBRARY_FILE + "'";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    EXPECT_NE(pipe, nullptr) << command;
    std::vector<std::string> names;
    char buffer[4096];
    while (pipe && std::fgets(buffer, sizeof buffer, pipe.get()) != nullptr) {
        std::istringstream line(buffer); // "<name> <kind> <address> [<size>]"
        std::string name;
        line >> name;
        names.push_back(name);
    }
    return names;
}

/// The linker's own markers of the data segment, which every shared library may show.
bool IsLinkerMarker(const std::string& name) {
    static const std::set<std::string> markers{"__bss_start", "_edata", "_end"};
    return markers.count(name) != 0;
}

std::string Demangled(const std::string& mangled) {
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(mangled.c_str(), nullptr, nullptr, &status), std::free);
    return status == 0 ? text.get() : mangled;
}

TEST(ExportedSymbolsTest, OnlyTheManufactureFunctionsAndTheExceptionTypes) {
    std::set<std::string> ours;
    for (const std::string& symbol : ExportedSymbols())
        if (!IsLinkerMarker(symbol))
            ours.insert(Demangled(symbol));

    const std::set<std::string> expected{
        "Window::ManufactureWindowFactory()",
        "Window::ManufactureInputCollector()",
        "typeinfo for Common::ApplicationErrorException",
        "typeinfo name for Common::ApplicationErrorException",
        "vtable for Common::ApplicationErrorException",
        // What a catch by value needs: the copy is destroyed, and asked for its message.
        "Common::ApplicationErrorException::~ApplicationErrorException()",
        "Common::ApplicationErrorException::what() const",
        // No virtual function, hence no virtual table.
        "typeinfo for Zenk::MissingInstance",
        "typeinfo name for Zenk::MissingInstance",
    };
    EXPECT_EQ(ours, expected);
}

} // namespace
