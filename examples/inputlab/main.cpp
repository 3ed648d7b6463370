// The input lab: opens the window library's window, draws into it with Vulkan and echoes every
// callback of the input collector as a numbered line. See README.md beside this file.

#include "CommandLine.h"
#include "InputScript.h"
#include "Lab.h"

#include <host/Bootstrap.h>
#include <zenkbase/missing_instance.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <iostream>

namespace {

// Exit codes: 0 done, 1 a failure while running, 2 a command line or script that was not
// understood (nothing was started).
constexpr int failed = 1;
constexpr int misused = 2;

std::atomic<bool> interrupted{false};

extern "C" void Interrupt(int) {
    interrupted = true;
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace InputLab;

    LabOptions options;
    std::optional<InputScript> script;
    try {
        options = ParseCommandLine(argc, argv);
        if (options.help) {
            std::cout << options.helpText;
            return 0;
        }
        // Checked before anything starts, so that bad input costs no window and no write.
        if (options.configNamed && !std::filesystem::exists(options.configPath))
            throw CommandLineError("configuration file " + options.configPath.string() +
                                   " does not exist");
        if (options.script)
            script = InputScript::Load(*options.script);
    } catch (const std::exception& error) {
        std::cerr << "inputlab: " << error.what() << '\n';
        return misused;
    }

    // Ctrl+C ends the loop like closing the window, so the window still saves its state.
    std::signal(SIGINT, Interrupt);
    std::signal(SIGTERM, Interrupt);

    try {
        Host::MessageLogSettings log;
        if (options.logFile)
            log.file = *options.logFile;
        Host::Bootstrap host({options.configPath, log});
        // The lab, and with it the window, goes before the bootstrap that it needs.
        Lab lab(host, options, std::move(script), std::cout);
        lab.Run(interrupted);
    } catch (const std::exception& error) {
        std::cerr << "inputlab: " << error.what() << '\n';
        return failed;
    } catch (const Zenk::MissingInstance& error) {
        std::cerr << "inputlab: " << error.message << '\n';
        return failed;
    }
    return 0;
}
