#include <string>

#include <gtest/gtest.h>

#include "vref/OutputFilter.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

std::string filtered(const std::string& bytes) {
    OutputFilter filter;
    std::string passed(filter.pass(bytes));
    passed += filter.finish();
    return passed;
}

TEST(OutputFilterTest, PassesWhatTheToolWritesItself) {
    const Terminal terminal(true, true, 80, 24, true);
    for (const std::string& text :
         {std::string("plain text\n\twith tabs, \u6E2C\u5B9A, \U0001F600, e\u0301\n"),
          terminal.styled(Style::Name, "a"), terminal.styled(Style::Heading, "a"),
          terminal.styled(Style::Faint, "a"), terminal.styled(Style::Warning, "a"),
          terminal.linked("file:///a%20b#c", terminal.styled(Style::Name, "a")),
          "\r[==  ]" + std::string(clearRestOfLine), std::string("right \u200F to \u200E left")})
        EXPECT_EQ(filtered(text), text);
}

TEST(OutputFilterTest, DropsWhatControlsATerminal) {
    const struct {
        const char* name;
        std::string bytes;
        std::string passed;
    } cases[] = {
        {"title", "a\033]0;owned\ab", "a]0;ownedb"},
        {"cursor", "\033[2J\033[1;1Hx", "[2J[1;1Hx"},
        {"a colour that is none of the tool's", "\033[31mred", "[31mred"},
        {"bell, backspace, delete", "a\a\b\x7F z", "a z"},
        {"a zero", std::string("a\0b", 3), "ab"},
        {"C1 as UTF-8", "a\u009B31mb\u0085c", "a31mbc"},
        {"C1 as a byte",
         "a\x9B"
         "31m",
         "a?31m"},
        {"override and isolates", "a\u202Eb\u2066c\u2069d\u2028e\u2029f", "abcdef"},
        {"bytes that are no UTF-8", "a\xFF\xC3(\xE2\x82",
         "a?"
         "?(?"},
        {"a link with a control in it", "\033]8;;http://a\033[2J\033\\x", "]8;;http://a[2J\\x"},
        {"a link without an end", "\033]8;;" + std::string(9000, 'a'),
         "]8;;" + std::string(9000, 'a')},
        {"an escape at the end", "a\033", "a"},
        {"a style that is cut off", "a\033[1", "a[1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(filtered(c.bytes), c.passed) << c.name;
}

TEST(OutputFilterTest, PutsTogetherWhatComesInPieces) {
    const std::string text =
        "\033[1;34ma\033[0m\u6E2C\033]8;;http://"
        "a\033\\x\033]8;;\033\\\033[K\U0001F600\u202E\033[9m.";
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        OutputFilter filter;
        std::string passed(filter.pass(text.substr(0, cut)));
        passed += filter.pass(text.substr(cut));
        passed += filter.finish();
        EXPECT_EQ(passed, filtered(text)) << "cut at " << cut;
    }
    OutputFilter bytewise;
    std::string passed;
    for (const char byte : text)
        passed += bytewise.pass({&byte, 1});
    passed += bytewise.finish();
    EXPECT_EQ(passed, filtered(text));
}

TEST(OutputFilterTest, HoldsBackNothingThatIsComplete) {
    OutputFilter filter;
    EXPECT_EQ(filter.pass("vref> "), "vref> ");
    EXPECT_EQ(filter.pass("\033[0m"), "\033[0m");
    EXPECT_EQ(filter.pass("\u6E2C"), "\u6E2C");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
