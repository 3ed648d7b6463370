// What an engine can reach in libwindow.so: the two manufacture functions by name, and the
// library's two exception types by type. Anything more of ours is a leak of the implementation.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <regex>
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

/// Symbols that are exported without being our code; the rule is kept to three kinds:
///  - the linker's own markers of the data segment;
///  - anything of namespaces std, __gnu_cxx or boost, including their type information and
///    virtual tables: their headers give them default visibility, so every module that
///    instantiates them exports them (weakly) and the dynamic linker keeps one copy;
///  - type information of a function type or function pointer, which std::function makes for
///    each callback signature (F is the mangling of a function type).
bool IsForeign(const std::string& mangled) {
    static const std::set<std::string> linkerMarkers{"__bss_start", "_edata", "_end"};
    // _Z, then optional typeinfo (TI), typeinfo name (TS), vtable (TV) or guard (GV), an
    // optional Z for a local static or lambda (named by its enclosing function), optional
    // nested-name and cv qualifiers, then the namespace: St (std), Sa/Sb/Ss/Si/So/Sd (std
    // abbreviations), 9__gnu_cxx or 5boost.
    static const std::regex foreignNamespace(
        "^_Z(T[ISV]|GV)?Z?N?[rVK]*(St|S[absiod]|9__gnu_cxx|5boost)");
    static const std::regex functionTypeInfo("^_ZT[IS]P?F");
    return linkerMarkers.count(mangled) != 0 || std::regex_search(mangled, foreignNamespace) ||
           std::regex_search(mangled, functionTypeInfo);
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
        if (!IsForeign(symbol))
            ours.insert(Demangled(symbol));

    const std::set<std::string> expected{
        "Window::ManufactureWindowFactory()",
        "Window::ManufactureInputCollector()",
        "typeinfo for Common::ApplicationErrorException",
        "typeinfo name for Common::ApplicationErrorException",
        "vtable for Common::ApplicationErrorException",
        // No virtual function, hence no virtual table.
        "typeinfo for Zenk::MissingInstance",
        "typeinfo name for Zenk::MissingInstance",
    };
    EXPECT_EQ(ours, expected);
}

// The filter must not hide what it is meant to catch: a symbol of ours in a std:: template's
// arguments, or any symbol of our namespaces, stays visible to the test above.
TEST(ExportedSymbolsTest, FilterKeepsOurOwnSymbols) {
    EXPECT_FALSE(IsForeign("_ZN6Window24ManufactureWindowFactoryEv"));
    EXPECT_FALSE(IsForeign("_ZTIN6Common25ApplicationErrorExceptionE"));
    EXPECT_FALSE(IsForeign("_ZN6Window10WindowImplD1Ev"));
    EXPECT_TRUE(IsForeign("_ZNSt6vectorIiSaIiEED1Ev"));
    EXPECT_TRUE(IsForeign("_ZTIN5boost16bad_lexical_castE"));
    EXPECT_TRUE(IsForeign("_ZTIFvvE"));
    EXPECT_TRUE(IsForeign("_ZZNSt19_Sp_make_shared_tag5_S_tiEvE5__tag"));
    EXPECT_FALSE(IsForeign("_ZZN6Window10WindowImplC1EvE5count"));
}

} // namespace
