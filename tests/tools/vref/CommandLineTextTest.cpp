#include <string>

#include <gtest/gtest.h>

#include "vref/CommandLineText.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

TEST(CommandLineTextTest, FindsTheNameInPastedCode) {
    const struct {
        std::string pasted;
        std::string name;
    } cases[] = {
        {"scipy.stats.gaussian_kde", "scipy.stats.gaussian_kde"},
        {"scipy.stats.gaussian_kde(data, ", "scipy.stats.gaussian_kde"},
        {"  scipy.stats.gaussian_kde()", "scipy.stats.gaussian_kde"},
        {"k = scipy.stats.gaussian_kde(data, bw=1)", "scipy.stats.gaussian_kde"},
        {">>> k = gaussian_kde(x)", "gaussian_kde"},
        {"return table(a)", "table"},
        {"columns of equal", "columns of equal"},
        {"os.path.", "os.path"},
        {"`plot`", "plot"},
        {"f((", "f"},
        {"(", "("},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(nameInPastedCode(c.pasted), c.name) << c.pasted;
}

TEST(CommandLineTextTest, DividesALineIntoArguments) {
    const struct {
        std::string line;
        std::vector<std::string> arguments;
    } cases[] = {
        {"", {}},
        {" \t ", {}},
        {"plot", {"plot"}},
        {"  plot   filter\tsmooth ", {"plot", "filter", "smooth"}},
        {"--limit 3 \"a b\" 'c d' `e f`", {"--limit", "3", "a b", "c d", "e f"}},
        {R"("say \"a\" b" 'it\'s' "\n")", {"say \"a\" b", "it's", "\\n"}},
        {"\"open to the end", {"open to the end"}},
        {"\"a\"b", {"a", "b"}},
        {"\"\" '' a", {"a"}},
        {"\"", {}},
        {"it's a\"b", {"it's", "a\"b"}},
        {"--type=\"a b\" --x='y z' -s=q", {"--type", "a b", "--x", "y z", "-s=q"}},
        {"a=\"b c\"", {"a=\"b", "c\""}},
        {"--x=", {"--x="}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(splitLine(c.line), c.arguments) << c.line;
}

TEST(CommandLineTextTest, RefusesWhatIsNotUtf8) {
    EXPECT_EQ(fromCommandLine("Gr\xC3\xB6\xC3\x9F"
                              "e"),
              u"Größe");
    EXPECT_THROW(static_cast<void>(fromCommandLine("\xFF")), UnusableError);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
