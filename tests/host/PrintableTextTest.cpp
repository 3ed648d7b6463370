// SPDX-License-Identifier: Zlib
// Text shown to a person: what would steer a terminal is escaped, and long words are cut.
#include <host/PrintableText.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(PrintableTextTest, EscapesWhatWouldSteerTheTerminal) {
    EXPECT_EQ(Host::Printable("é\tb\x1b[2J\x7f"), "é\\x09b\\x1b[2J\\x7f");
    EXPECT_EQ(Host::Printable("\xc2\x9b \xff\xe2\x82"),
              "\\xc2\\x9b \\xff\\xe2\\x82");      // C1, bad, cut
    EXPECT_EQ(Host::Printable("\\x1b"), "\\x1b"); // escaping twice changes nothing
    EXPECT_EQ(Host::Quoted(std::string(41, 'a')), '"' + std::string(40, 'a') + "...\"");
    EXPECT_FALSE(Host::IsUtf8("\xed\xa0\x80")); // a surrogate
    EXPECT_TRUE(Host::IsUtf8("\xf4\x8f\xbf\xbf"));
}

} // namespace
