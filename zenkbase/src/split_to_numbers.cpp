// SPDX-License-Identifier: Zlib
#include <zenkbase/split_to_numbers.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <locale>

namespace Zenk {

std::vector<std::string> SplitToNumbers(const std::string& text) {
    // The braces are tested on the untrimmed text: " {1,2}" is not a list.
    if (text.size() < 3 || text.front() != '{' || text.back() != '}')
        return {};

    std::vector<std::string> tokens;
    // No compression: every separator ends a token, so "{8,6}" gives "", "8", "6", "".
    boost::algorithm::split(tokens, text, boost::algorithm::is_any_of("{},"),
                            boost::algorithm::token_compress_off);

    std::vector<std::string> numbers;
    numbers.reserve(tokens.size());
    for (auto& token : tokens) {
        // Blanks are the C locale's, whatever the engine's global locale calls a blank.
        boost::algorithm::trim(token, std::locale::classic());
        if (!token.empty())
            numbers.push_back(std::move(token));
    }
    return numbers;
}

} // namespace Zenk
