// SPDX-License-Identifier: Zlib
#include "LabConfiguration.h"

#include "PrintableText.h"

#include <host/ConfigFile.h>
#include <zenkbase/split_to_numbers.h>

#include <boost/lexical_cast/try_lexical_convert.hpp>

namespace InputLab {

namespace {

// The keys and defaults of the library's configuration, with its rules for reading them. The
// library keeps its readers to itself, so the lab repeats them here; a change there must come
// here too, or the lab would refuse a file the library takes, or pass one it refuses.
const char* const pollRateKey = "Window/Input/PollRate";
constexpr int defaultPollRate = 60;
constexpr int maximumPollRate = 1000000;
const char* const resolutionKey = "Window/Resolution";
const char* const defaultResolution = "{1000,1000}";
const char* const fullScreenKey = "Window/FullScreen";

/// Whether the library takes `token` as one side of a window size: what Boost's cast to
/// `unsigned short` reads. The cast to `unsigned int` goes first, as in the library: Boost 1.74's
/// 16-bit cast overflows an `int` on some tokens that the 32-bit one refuses harmlessly.
bool IsSide(const std::string& token) {
    unsigned int wide = 0;
    unsigned short side = 0;
    return boost::conversion::try_lexical_convert(token, wide) &&
           boost::conversion::try_lexical_convert(token, side);
}

/// Whether the library takes `text` as a window size: a braced pair of sides, with the
/// library's leniency about blanks, signs and separators.
bool IsResolution(const std::string& text) {
    const std::vector<std::string> numbers = Zenk::SplitToNumbers(text);
    return numbers.size() == 2 && IsSide(numbers[0]) && IsSide(numbers[1]);
}

unsigned long long TickPeriod(int pollRate) {
    // As the library: a rate of 0 or below means the default, one above a tick per microsecond
    // means the fastest ticker.
    if (pollRate <= 0)
        pollRate = defaultPollRate;
    else if (pollRate > maximumPollRate)
        pollRate = maximumPollRate;
    return 1000000ULL / static_cast<unsigned long long>(pollRate);
}

std::string Named(const std::filesystem::path& path) {
    return '"' + Printable(path.string()) + '"';
}

} // namespace

LabSettings LoadConfiguration(const std::filesystem::path& path, bool named) {
    std::error_code error;
    if (named && !std::filesystem::exists(path, error) && !error)
        throw ConfigurationError("Configuration file " + Named(path) + " does not exist");
    try {
        Host::ConfigFile config(path);
        LabSettings settings;
        const std::string resolution = config.ReadText(resolutionKey, defaultResolution);
        if (!IsResolution(resolution))
            throw ConfigurationError(std::string("Configuration key \"") + resolutionKey +
                                     "\" in " + Named(path) + " holds " + Quoted(resolution) +
                                     ", which is not a size such as \"" + defaultResolution +
                                     "\" (two whole numbers from 0 to 65535)");
        settings.fullScreen = config.ReadInteger(fullScreenKey, 0) > 0;
        settings.tickPeriod = TickPeriod(config.ReadInteger(pollRateKey, defaultPollRate));
        return settings;
    } catch (const ConfigurationError&) {
        throw;
    } catch (const std::exception& failure) {
        // The host's messages already name the file and the key.
        throw ConfigurationError(failure.what());
    }
}

} // namespace InputLab
