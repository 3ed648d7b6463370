// SPDX-License-Identifier: Zlib
#include <window/Configuration.h>
#include <zenkbase/split_to_numbers.h>

#include <boost/lexical_cast.hpp>
#include <boost/lexical_cast/try_lexical_convert.hpp>

namespace Window::Configuration {
namespace {

/// Boost 1.74 multiplies a byte's digit value before it checks that the byte is a digit, in
/// `int` for a 16-bit target: a byte below '0' (".", "/", a misplaced thousands separator, any
/// byte from 0x80) far enough from the end overflows ("1080.00000"). For a 32-bit target the
/// same arithmetic is unsigned and wraps harmlessly, and it walks the same bytes by the same
/// rules; so a token that it refuses, the 16-bit cast refuses too, and one that it reads holds
/// only digits where the 16-bit cast multiplies. (The build assumes the C locale for every cast:
/// an engine's global locale neither groups what is written nor changes what is read.)
bool SafeForTheCast(const std::string& token) {
    unsigned int wide = 0;
    return boost::conversion::try_lexical_convert(token, wide);
}

} // namespace

std::string ResolutionToText(const Resolution& resolution) {
    return "{" + boost::lexical_cast<std::string>(resolution.width) + "," +
           boost::lexical_cast<std::string>(resolution.height) + "}";
}

std::optional<Resolution> ResolutionFromText(const std::string& text) {
    const std::vector<std::string> numbers = Zenk::SplitToNumbers(text);
    if (numbers.size() != 2 || !SafeForTheCast(numbers[0]) || !SafeForTheCast(numbers[1]))
        return std::nullopt;
    try {
        // The cast, not a hand-written parser, decides what a number is: a sign, leading zeros
        // and a "-" that wraps modulo 65536 are accepted, anything above 65535 is not.
        return Resolution{boost::lexical_cast<unsigned short>(numbers[0]),
                          boost::lexical_cast<unsigned short>(numbers[1])};
    } catch (const boost::bad_lexical_cast&) {
        return std::nullopt;
    }
}

} // namespace Window::Configuration
