#include <string>

#include <gtest/gtest.h>

#include "vref/CommandLineText.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::tools {
namespace {

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

TEST(CommandLineTextTest, RefusesWhatIsNotUtf8) {
    EXPECT_EQ(fromCommandLine("Gr\xC3\xB6\xC3\x9F"
                              "e"),
              u"Größe");
    EXPECT_THROW(static_cast<void>(fromCommandLine("\xFF")), UnusableError);
}

}  // namespace
}  // namespace reference::tools
