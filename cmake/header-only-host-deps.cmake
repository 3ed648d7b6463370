# SPDX-License-Identifier: Zlib
# spdlog and toml++ as header-only libraries, for builds where no package of theirs can be found
# (Debian packages them for Linux only). fmt, which spdlog formats with, is header-only as well.
# Their headers must be reachable by the compiler's search path: the cross build of `./dev
# windows` links them into a folder of its own.
find_path(WINDOW_SPDLOG_INCLUDE_DIR spdlog/spdlog.h REQUIRED)
find_path(WINDOW_FMT_INCLUDE_DIR fmt/format-inl.h REQUIRED)
find_path(WINDOW_TOMLPLUSPLUS_INCLUDE_DIR toml++/toml.h REQUIRED)

if(NOT TARGET spdlog::spdlog)
    add_library(spdlog::spdlog INTERFACE IMPORTED)
    set_target_properties(spdlog::spdlog PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${WINDOW_SPDLOG_INCLUDE_DIR};${WINDOW_FMT_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS "SPDLOG_FMT_EXTERNAL;FMT_HEADER_ONLY=1")
endif()
if(NOT TARGET tomlplusplus::tomlplusplus)
    add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
    # toml++'s own assertions off, as in the library that Debian builds (with NDEBUG) and Linux
    # links, whatever our build type: one of them is wrong, and fires in a Debug build on a file
    # of "[[[" (parse_key's TOML_ASSERT_ASSUME), which the parser goes on to refuse as any other
    # malformed file (the committed input fuzz/corpus/config_file/not-toml).
    # (An option, not a definition: CMake drops function-like macros from definitions.)
    set_target_properties(tomlplusplus::tomlplusplus PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${WINDOW_TOMLPLUSPLUS_INCLUDE_DIR}"
        INTERFACE_COMPILE_OPTIONS "-DTOML_ASSERT(expr)=static_assert(true)")
endif()
