// SPDX-License-Identifier: Zlib
// The input lab: opens the window library's window, draws into it with Vulkan and echoes every
// callback of the input collector as a numbered line. See README.md beside this file.

#include "CommandLine.h"
#include "Lab.h"
#include "LabConfiguration.h"

#include <host/Bootstrap.h>
#include <host/InputScript.h>
#include <host/PrintableText.h>
#include <zenkbase/missing_instance.h>

// On Windows SDL's own entry point (SDL2main) runs first and calls this main with the command
// line read as wide text and converted to UTF-8, so arguments are UTF-8 as on Linux; the header
// renames main for it.
#include <SDL_main.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

namespace {

std::atomic<bool> interrupted{false};

extern "C" void Interrupt(int) {
    interrupted = true;
}

/// Prints the message of a failure, its control bytes escaped (it may quote a file or an
/// argument), and gives the exit code of its kind.
int Fail(const std::string& message, InputLab::ExitCode code) {
    std::cerr << "inputlab: " << Host::Printable(message) << '\n';
    return static_cast<int>(code);
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace InputLab;

    // Everything from outside is read and checked before anything starts, so that bad input
    // costs no window and no write.
    LabOptions options;
    try {
        options = ParseCommandLine(argc, argv);
    } catch (const CommandLineError& error) {
        return Fail(error.what(), ExitCode::Misused);
    }
    if (options.help) {
        std::cout << options.helpText;
        return 0;
    }
    std::optional<Host::InputScript> script;
    LabSettings settings;
    try {
        if (options.script)
            script = Host::InputScript::Load(*options.script);
        settings = LoadConfiguration(options.configPath, options.configNamed);
    } catch (const Host::InputScriptError& error) {
        return Fail(error.what(), ExitCode::BadScript);
    } catch (const ConfigurationError& error) {
        return Fail(error.what(), ExitCode::BadConfiguration);
    }

    // Ctrl+C ends the loop like closing the window, so the window still saves its state.
    std::signal(SIGINT, Interrupt);
    std::signal(SIGTERM, Interrupt);

    try {
        Host::MessageLogSettings log;
        if (options.logFile)
            log.file = *options.logFile;
        Host::BootstrapSettings startup(options.configPath, log);
        startup.framePace = Lab::Pace(options);
        Host::Bootstrap host(startup);
        // The lab, and with it the window, goes before the bootstrap that it needs.
        Lab lab(host, options, settings, std::move(script), std::cout);
        lab.Run(interrupted);
    } catch (const std::exception& error) {
        return Fail(error.what(), ExitCode::Failed);
    } catch (const Zenk::MissingInstance& error) {
        return Fail(error.message, ExitCode::Failed);
    }
    return 0;
}
