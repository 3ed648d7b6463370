#include "display/ResolutionText.h"

#include <zenkbase/split_to_numbers.h>

#include <boost/lexical_cast.hpp>

namespace Window {

std::string ResolutionToText(const Resolution& resolution) {
    return "{" + boost::lexical_cast<std::string>(resolution.width) + "," +
           boost::lexical_cast<std::string>(resolution.height) + "}";
}

std::optional<Resolution> ResolutionFromText(const std::string& text) {
    const std::vector<std::string> numbers = Zenk::SplitToNumbers(text);
    if (numbers.size() != 2)
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

} // namespace Window
