// SPDX-License-Identifier: Zlib
// The ways an engine writes its first line, compiled with the host tests: a configuration path
// as a path variable, a string or a literal, with and without log settings or entry points. Never
// run: what is checked is that each line compiles and picks the settings.

#include <host/Bootstrap.h>

#include <string>
#include <type_traits>

static_assert(!std::is_copy_constructible_v<Host::Bootstrap> &&
                  !std::is_move_constructible_v<Host::Bootstrap>,
              "a bootstrap owns the process's services: it is neither copied nor moved");

void BootstrapCalls(const std::filesystem::path& path, const std::string& text,
                    const std::filesystem::path& logPath) {
    Host::Bootstrap fromPath({path});
    Host::Bootstrap fromText({text});
    Host::Bootstrap fromLiteral({"config.toml"});
    Host::Bootstrap pathWithLog({path, {true, logPath}});
    Host::Bootstrap literalWithLog({"config.toml", {false, "engine.log"}});
    Host::Bootstrap withEntryPoints({path}, Host::WindowLibraryEntryPoints());
    Host::Bootstrap fromSettings(Host::BootstrapSettings{path});
}
