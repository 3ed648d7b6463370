// SPDX-License-Identifier: Zlib
#include "CommandLine.h"

#include <host/PrintableText.h>
#include <window/Version.h>

#include <boost/program_options.hpp>

#include <charconv>
#include <cstdlib>
#include <limits>
#include <sstream>

namespace InputLab {

namespace {

namespace po = boost::program_options;

po::options_description Describe(const std::filesystem::path& defaultConfig) {
    po::options_description options("Options");
    // Values are taken as text and checked here, so that every message names the option and the
    // value in the same words.
    options.add_options()("help,h", "Print this help and exit.")(
        "version", "Print the window library's version and exit.")(
        "config", po::value<std::string>()->value_name("PATH"),
        ("Configuration file (TOML); it must exist. The window's size and full-screen state "
         "are read from it and written back at exit. Without this option: " +
         Host::Printable(defaultConfig.string()) + ", created at the first exit")
            .c_str())("log", po::value<std::string>()->value_name("PATH"),
                      "Also append the message log to this file.")(
        "frames", po::value<std::string>()->value_name("N"),
        "Exit after N frames of the main loop (N > 0; frames skipped while minimised count). "
        "Without it the lab runs until its window closes.")(
        "screenshot", po::value<std::string>()->value_name("PATH"),
        "At exit, write the last rendered frame to PATH as a PNG image.")(
        "script", po::value<std::string>()->value_name("PATH"),
        "Inject the input events listed in PATH, one per line (the format is in the host "
        "kit's header host/InputScript.h, which the lab's guide below names), e.g. "
        "\"key down a\", \"motion 100 200\", \"wait 5\". While it plays, the window "
        "system's own input is held back.")(
        "record", po::value<std::string>()->value_name("PATH"),
        "Write every input event of the run to PATH, in the format of --script, so that "
        "--script PATH replays it exactly. With --script or --record, time follows the "
        "frames rather than the clock.");
    return options;
}

unsigned long long ParseFrames(const std::string& text) {
    // The loop counts frames in an unsigned long long, so that is the limit.
    unsigned long long frames = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, frames);
    if (error != std::errc() || stop != end || frames == 0)
        throw CommandLineError("--frames needs a whole number of frames from 1 to " +
                               std::to_string(std::numeric_limits<unsigned long long>::max()) +
                               ", not " + Host::Quoted(text));
    return frames;
}

std::string HelpText(const std::string& program, const po::options_description& options) {
    std::ostringstream text;
    text << "Usage: " << Host::Printable(program) << " [options]\n\n"
         << "Opens the library's window, draws with Vulkan and prints one numbered line for every\n"
         << "callback the library makes. Keys: 1-3 background colour, Escape menu, Return full\n"
         << "screen, F3 window size, F2 text input (Backspace on an empty line ends it), W A S D\n"
         << "Q E and the modifiers light cells while held; the mouse moves the square, the wheel\n"
         << "pulses.\n\n"
         << options << "\nExit codes:\n"
         << "  " << static_cast<int>(ExitCode::Done) << "  done\n"
         << "  " << static_cast<int>(ExitCode::Failed)
         << "  the window system, Vulkan, the log or the screenshot failed\n"
         << "  " << static_cast<int>(ExitCode::Misused) << "  the command line was not understood\n"
         << "  " << static_cast<int>(ExitCode::BadScript)
         << "  the input script could not be read or was not understood\n"
         << "  " << static_cast<int>(ExitCode::BadConfiguration)
         << "  the configuration file is missing (when named), unreadable, corrupt or holds a bad\n"
         << "     value; nothing was started and nothing written\n\n"
         << "Documents, in " << INPUTLAB_DOC_DIR << " under the installation's prefix: the\n"
         << "library's README.md, CHANGELOG.md and LICENSE, and inputlab/README.md, the lab's "
            "guide\n"
         << "(scripts and recording, the overlay, the poll rate); in the source, the top folder\n"
         << "and examples/inputlab/README.md.\n";
    return text.str();
}

} // namespace

std::filesystem::path DefaultConfigPath(const char* xdgConfigHome, const char* home) {
    if (xdgConfigHome != nullptr && *xdgConfigHome != '\0')
        return std::filesystem::path(xdgConfigHome) / "inputlab" / "config.toml";
    if (home != nullptr && *home != '\0')
        return std::filesystem::path(home) / ".config" / "inputlab" / "config.toml";
    return std::filesystem::path("inputlab") / "config.toml";
}

std::filesystem::path DefaultConfigPath(const wchar_t* appData) {
    if (appData != nullptr && *appData != L'\0')
        return std::filesystem::path(appData) / "inputlab" / "config.toml";
    return std::filesystem::path("inputlab") / "config.toml";
}

LabOptions ParseCommandLine(int argc, const char* const argv[]) {
    LabOptions result;
#if defined(_WIN32)
    // The variable read as wide text, which names every folder, rather than SDL_GetPrefPath,
    // which creates the folder: a refused command line or --help must write nothing.
    result.configPath = DefaultConfigPath(_wgetenv(L"APPDATA"));
#else
    result.configPath = DefaultConfigPath(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME"));
#endif
    const auto options = Describe(result.configPath);

    po::variables_map values;
    try {
        // Unknown words are collected rather than refused by the parser, so that the message can
        // name the word itself, positional ones included.
        const po::parsed_options parsed =
            po::command_line_parser(argc, argv).options(options).allow_unregistered().run();
        const auto unknown = po::collect_unrecognized(parsed.options, po::include_positional);
        if (!unknown.empty())
            throw CommandLineError((unknown.front().rfind('-', 0) == 0
                                        ? "unrecognised option " + Host::Quoted(unknown.front())
                                        : "unexpected argument " + Host::Quoted(unknown.front())) +
                                   " (see --help)");
        po::store(parsed, values);
        po::notify(values);
    } catch (const po::error& error) {
        throw CommandLineError(std::string(error.what()) + " (see --help)");
    }

    if (values.count("help") != 0) {
        result.help = true;
        result.helpText = HelpText(argc > 0 ? argv[0] : "inputlab", options);
        return result;
    }
    if (values.count("version") != 0) {
        result.help = true;
        result.helpText = std::string("inputlab, window library ") + WINDOW_VERSION_STRING + "\n";
        return result;
    }
    // Paths arrive as UTF-8 (on Windows through SDL's entry point), not in the ANSI code page that
    // a narrow path means there.
    if (values.count("config") != 0) {
        result.configPath = std::filesystem::u8path(values["config"].as<std::string>());
        result.configNamed = true;
    }
    if (values.count("log") != 0)
        result.logFile = std::filesystem::u8path(values["log"].as<std::string>());
    if (values.count("frames") != 0)
        result.frames = ParseFrames(values["frames"].as<std::string>());
    if (values.count("screenshot") != 0)
        result.screenshot = std::filesystem::u8path(values["screenshot"].as<std::string>());
    if (values.count("script") != 0)
        result.script = std::filesystem::u8path(values["script"].as<std::string>());
    if (values.count("record") != 0)
        result.record = std::filesystem::u8path(values["record"].as<std::string>());
    return result;
}

} // namespace InputLab
