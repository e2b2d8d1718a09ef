// A pattern and a candidate, each on a line: the match of unqualified names against its contract in
// other words.
#include <cstddef>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "refutils/matchUnqualifiedString.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

// The candidate is cut after each divider, and the pattern looked for among it and what remains.
bool isOneOfItsEndings(const std::u16string& pattern, const std::u16string& candidate) {
    if (pattern == candidate)
        return true;
    for (std::size_t at = 0; at < candidate.size(); ++at)
        if ((candidate[at] == u'.' || candidate[at] == u'/') && !pattern.empty() &&
            candidate.substr(at + 1) == pattern)
            return true;
    return false;
}

void run(std::string_view input) {
    const auto lines = linesOf(input);
    // A cap: the model is quadratic.
    constexpr std::size_t longest = 2000;
    if (lines.size() < 2 || input.size() > longest)
        return;
    const std::u16string pattern = unitsOf(lines[0]);
    const std::u16string candidate = unitsOf(lines[1]);
    std::size_t components = 1;
    for (const char16_t unit : pattern)
        components += unit == u'.' ? 1 : 0;
    const auto matches = [&](bool qualified) {
        return utils::matchUnqualifiedString(pattern, components, candidate, qualified);
    };
    require(matches(true) == (pattern == candidate), "A qualified name is the whole");
    require(matches(false) == isOneOfItsEndings(pattern, candidate),
            "An unqualified name is an ending at a divider");
}

const FuzzTarget target("UnqualifiedMatch", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
