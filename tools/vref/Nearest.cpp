#include "vref/Nearest.hpp"

#include <algorithm>
#include <cstddef>

#include <boost/algorithm/string/case_conv.hpp>

namespace reference::tools {
namespace {

constexpr std::size_t shortWord = 3;
constexpr std::size_t minPrefix = 2;

// How many slips turn one word into the other; two exchanged neighbours are one slip. The table has
// a row for each beginning of `a` and a column for each beginning of `b`.
std::size_t slipsBetween(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> slips(a.size() + 1,
                                                std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                slips[i][j] = std::max(i, j);
                continue;
            }
            const std::size_t wrong = a[i - 1] == b[j - 1] ? 0 : 1;
            slips[i][j] =
                std::min({slips[i - 1][j] + 1, slips[i][j - 1] + 1, slips[i - 1][j - 1] + wrong});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
        }
    return slips[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> nearest(std::string_view typed, const std::vector<std::string>& words) {
    const std::string wanted = boost::to_lower_copy(std::string(typed));
    std::size_t admitted = wanted.size() <= shortWord ? 1 : 2;
    std::optional<std::string> found;
    for (const auto& word : words) {
        const std::size_t slips = slipsBetween(wanted, boost::to_lower_copy(word));
        if (slips > admitted || (found && slips == admitted) || slips >= wanted.size())
            continue;
        admitted = slips;
        found = word;
    }
    if (found || wanted.size() < minPrefix)
        return found;
    const auto begins = [&](const std::string& word) { return word.starts_with(wanted); };
    if (std::ranges::count_if(words, begins) == 1)
        return *std::ranges::find_if(words, begins);
    return std::nullopt;
}

}  // namespace reference::tools
